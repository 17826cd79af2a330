# The losses that tests/laws/losses.json declares, as a page. A value is shown as JSON.

def code: "`" + . + "`";
def bars_escaped: gsub("\\|"; "\\|");
def names: map(code) | join(", ");
def as_code: tojson | code;

def condition:
    if .key == "has" then .value | map("with " + code)[]
    elif .key == "lacks" then .value | map("without " + code)[]
    elif .key == "lacks entries" then .value | map("with no entry in " + code)[]
    elif .key == "lacks one group" then "where one of these groups is wholly absent: " + (.value | map(names) | join("; "))
    elif .key == "is" then .value | to_entries[] | "where \(.key | code) is \(.value | as_code)"
    elif .key == "is not" then .value | to_entries[] | "where \(.key | code) is not \(.value | as_code)"
    else error("unknown condition: " + .key)
    end;

def conditions:
    [(.where // {} | to_entries[] | condition),
     (."in documents with" // {} | to_entries[] | "where \(.key | code) is \(.value | as_code)")]
    | map(", " + .) | join("");

def given:
    if has("value") then .value | as_code
    elif has("value number") then "its number in the list"
    elif has("value above") then "the value of the object that it is in"
    elif has("value of") then "the value of " + (."value of" | code)
    elif has("name above") then "the name of the object that it is in"
    elif has("count of") then "the number of entries of " + (."count of" | code)
    elif has("stations of") then "a list of the stations of " + (."stations of" | code)
    else error("a value of no kind: " + tojson)
    end;

def when: if has("when") then .when | map(as_code) | join(" or ") else "any value" end;

def what_happens:
    if .loss == "default" then "absent becomes " + given
    elif .loss == "added" then "always becomes " + given
    elif .loss == "becomes" then when + " becomes " + given
    elif .loss == "becomes an integer" then (if has("when") then when else "a text" end) + " becomes an integer"
    elif .loss == "becomes a text" then "an integer becomes a text"
    elif .loss == "dropped" then when + " is dropped"
    elif .loss == "cut" then "a number is cut to seven characters"
    elif .loss == "read elsewhere" then "becomes the value of " + (.from | code)
    elif .loss == "derived contype" then "\("contype" | code) becomes that of its services"
    elif .loss == "reserved hosts" then "\("dhcpd/reserved" | code) of \("ipv6" | code) takes over the hosts of \("ip" | code)"
    elif .loss == "number taken" then "an entry of \(.second | code) is dropped where \(.first | code) has its number"
    elif .loss == "joined" then
        (.names | names) + ": \(.first | code) and \(.second | code) both get what"
        + " \(if ."first wins" then .first else .second end | code) has"
    elif .loss == "shared" then
        (.names | names) + " in \(.in | code): all of \(.entries | code) get what the "
        + (if ."first wins" then "first" else "last" end) + " of them has"
    else error("a loss of no kind: " + .loss)
    end + conditions;

def line(speaks_of): "| \(.layout) | \(speaks_of | names | bars_escaped) | \(what_happens | bars_escaped) | \(.reason | bars_escaped) |";

"# What does not come back

A configuration that goes to the other layout and back comes back as it was, less what this page lists. \"Old\" is what an
old configuration loses on its way to the new layout and back, \"new\" the same the other way round. `tests/laws` makes
configurations by chance and fails on every other loss, and when one of these never occurs.

Written by `scripts/docs.sh` from `tests/laws/losses.json`; a test compares the two.

## By the words of tables

Wherever a table has the word, in every room (`src/frame`).

| layout | word | loss | reason |
|---|---|---|---|",
(.[] | select(has("words")) | line(.words)),
"
## By place

`*` is any name or position, `[ppp]` any member whose \"type\" is \"ppp\", `**` any depth, and `a|b` either name.

| layout | place | loss | reason |
|---|---|---|---|",
(.[] | select(has("places")) | line(.places))
