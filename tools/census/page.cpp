// The census as one page that needs nothing else: bars of the shares, and the places by number of devices.
#include <algorithm>
#include <string>
#include <string_view>

#include "print/numbers.h"
#include "report.h"

namespace kcnvrt {

namespace {

constexpr const char* kHead = R"(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<meta name="color-scheme" content="light dark">
<title>Census of configurations</title>
<style>
:root { --paper: #fcfcfb; --ink: #1d2125; --faint: #626a73; --rule: #d9dde1; --track: #e8ebee;
  --clean: #2e8555; --warned: #b98900; --lossy: #c2571a; --rejected: #b3261e; }
@media (prefers-color-scheme: dark) {
  :root { --paper: #16191c; --ink: #e6e8ea; --faint: #9aa3ac; --rule: #343a40; --track: #262b30;
    --clean: #4fb37c; --warned: #d9ab2b; --lossy: #e58345; --rejected: #ef6a61; }
}
* { box-sizing: border-box; }
body { margin: 0 auto; padding: 2rem 1.25rem 4rem; max-width: 64rem; background: var(--paper); color: var(--ink);
  font: 16px/1.5 system-ui, sans-serif; }
h1 { margin: 0; font-size: 1.6rem; line-height: 1.2; }
h2 { margin: 2.5rem 0 .75rem; font-size: 1.1rem; }
p { margin: .35rem 0 0; color: var(--faint); }
.all { display: flex; height: 1.5rem; margin: 1.5rem 0 1.25rem; border-radius: .25rem; overflow: hidden;
  background: var(--track); }
.all span { min-width: 2px; }
.clean { background: var(--clean); } .warned { background: var(--warned); }
.lossy { background: var(--lossy); } .rejected { background: var(--rejected); }
table { width: 100%; border-collapse: collapse; }
th { padding: .35rem .75rem .35rem 0; text-align: left; font-weight: 600; font-size: .85rem; color: var(--faint);
  border-bottom: 1px solid var(--rule); }
td { padding: .4rem .75rem .4rem 0; vertical-align: top; border-bottom: 1px solid var(--rule); }
td:last-child, th:last-child { padding-right: 0; }
.number { text-align: right; white-space: nowrap; font-variant-numeric: tabular-nums; }
.dot { display: inline-block; width: .75rem; height: .75rem; margin-right: .5rem; border-radius: .15rem; }
dl { display: grid; grid-template-columns: max-content 1fr; gap: .15rem 1rem; margin: 0 0 1rem; font-size: .9rem;
  color: var(--faint); }
dt { color: var(--ink); }
dd { margin: 0; }
td.place, td.id { font-family: ui-monospace, monospace; font-size: .88rem; overflow-wrap: anywhere; }
.bar { width: 22%; min-width: 5rem; }
.bar div { height: .7rem; margin-top: .4rem; border-radius: .15rem; background: var(--track); }
.bar span { display: block; height: 100%; min-width: 2px; border-radius: .15rem; }
@media (max-width: 48rem) {
  .bar { display: none; }
  .places, .places tbody { display: block; }
  .places tr { display: flex; flex-wrap: wrap; border-bottom: 1px solid var(--rule); }
  .places th, .places td { border: 0; }
  .places .id { margin-left: auto; }
  .places .place { order: 1; flex: 0 0 100%; padding: 0 0 .4rem; }
}
</style>
</head>
<body>
)";

std::string escaped(std::string_view text) {
    std::string html;
    for (const char byte : text) {
        switch (byte) {
            case '<':
                html += "&lt;";
                break;
            case '&':
                html += "&amp;";
                break;
            case '"':
                html += "&quot;";
                break;
            default:
                html += byte;
        }
    }
    return html;
}

std::string width_of(std::size_t part, std::size_t whole) {
    const double percent = whole == 0 ? 0 : 100.0 * static_cast<double>(part) / static_cast<double>(whole);
    return "style=\"width:" + with_digits(percent, 2) + "%\"";
}

// The colour of the share that such devices are in.
const char* color_of(const std::string& kind) {
    if (kind == "error") return "rejected";
    return kind == "warning" ? "warned" : "lossy";
}

std::string bar_of_all(const Report& report) {
    std::string bar = "<div class=\"all\" role=\"img\" aria-label=\"Shares of the devices, as in the table below\">";
    for (const Share& share : shares_of(report.tally))
        if (share.devices != 0)
            bar += std::string("<span class=\"") + share.label + "\" " + width_of(share.devices, report.tally.records) +
                   "></span>";
    return bar + "</div>\n";
}

std::string table_of_shares(const Report& report) {
    std::string table = "<table>\n";
    for (const Share& share : shares_of(report.tally))
        table += std::string("<tr><td><span class=\"dot ") + share.label + "\"></span>" + share.name +
                 "</td><td class=\"number\">" + grouped(share.devices) + "</td><td class=\"number\">" +
                 percent(share.devices, report.tally.records) + "</td></tr>\n";
    return table + "</table>\n";
}

struct Meaning {
    const char* kind;
    const char* words;
};

constexpr Meaning kMeanings[] = {
    {"error", "the configuration is rejected"},
    {"warning", "something is left out"},
    {"dropped", "nothing uses it"},
    {"cut", "only its beginning comes back from the other layout"},
    {"changed", "comes back from the other layout as something else"},
    {"defaulted", "comes back from the other layout although it was not there"},
    {"renumbered", "an entry of a list, which comes back under another number"},
};

// Of the kinds that there are.
std::string meanings_of(const Report& report) {
    std::string list = "<dl>\n";
    for (const Meaning& meaning : kMeanings)
        if (std::ranges::find(report.troubles, meaning.kind, &Trouble::kind) != report.troubles.end())
            list += std::string("<dt>") + meaning.kind + "</dt><dd>" + meaning.words + "</dd>\n";
    return list + "</dl>\n";
}

std::string row_of(const Trouble& trouble, std::size_t most) {
    return "<tr><td class=\"number\">" + grouped(trouble.devices) + "</td><td class=\"bar\"><div><span class=\"" +
           color_of(trouble.kind) + "\" " + width_of(trouble.devices, most) + "></span></div></td><td>" +
           escaped(trouble.kind) + "</td><td class=\"place\">" +
           (trouble.place.empty() ? "the whole configuration" : escaped(trouble.place)) + "</td><td class=\"id\">" +
           escaped(trouble.example) + "</td></tr>\n";
}

std::string table_of_places(const Report& report) {
    if (report.troubles.empty()) return "<p>Nothing is lost, and nothing is left out.</p>\n";
    std::string table =
        meanings_of(report) +
        "<table class=\"places\">\n<tr><th class=\"number\">Devices</th><th class=\"bar\"></th><th>What</th>"
        "<th class=\"place\">Place</th><th class=\"id\">For example</th></tr>\n";
    for (const Trouble& trouble : report.troubles) table += row_of(trouble, report.troubles.front().devices);
    return table + "</table>\n<p>* stands for a number, or a name that a device gave.</p>\n";
}

}  // namespace

std::string page_of(const Report& report) {
    return kHead + std::string("<h1>") + counted(report.tally.records, "device", "devices") + "</h1>\n<p>" +
           counted(report.tally.bytes, "byte", "bytes") + " of configurations, converted in memory in " +
           report.seconds + " s. No value of them is on this page.</p>\n" + bar_of_all(report) +
           table_of_shares(report) + "<h2>Places</h2>\n" + table_of_places(report) + "</body>\n</html>\n";
}

}  // namespace kcnvrt
