// Tabs: one is in the order of the tab key, arrows move between them.

/** `onShow` is called with the panel's id. */
export function makeTabs(list, onShow) {
    const tabs = [...list.querySelectorAll('[role="tab"]')];
    const show = (tab) => {
        for (const other of tabs) {
            const isChosen = other === tab;
            other.setAttribute('aria-selected', String(isChosen));
            other.tabIndex = isChosen ? 0 : -1;
        }
        // Only the list is scrolled: the page stays where it is.
        const most = tab.offsetLeft - list.offsetLeft;
        list.scrollLeft = Math.max(Math.min(list.scrollLeft, most), most + tab.offsetWidth - list.clientWidth);
        onShow(tab.getAttribute('aria-controls'));
    };
    const step = { ArrowRight: 1, ArrowLeft: -1 };
    list.addEventListener('keydown', (event) => {
        const at = tabs.indexOf(document.activeElement);
        if (at < 0) return;
        const ends = { Home: 0, End: tabs.length - 1 };
        const next = ends[event.key] ?? (event.key in step ? (at + step[event.key] + tabs.length) % tabs.length : null);
        if (next === null) return;
        event.preventDefault();
        tabs[next].focus();
        show(tabs[next]);
    });
    for (const tab of tabs) tab.addEventListener('click', () => show(tab));
    return (id) => show(tabs.find((tab) => tab.getAttribute('aria-controls') === id));
}
