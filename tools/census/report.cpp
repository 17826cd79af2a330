#include "report.h"

#include <algorithm>

#include "print/json_line.h"
#include "print/numbers.h"
#include "print/printable.h"
#include "print/terminal.h"

namespace kcnvrt {

namespace {

constexpr std::size_t kWidestNumber = 12;

std::string right(std::string text, std::size_t width) {
    if (text.size() < width) text.insert(0, width - text.size(), ' ');
    return text;
}

std::string left(std::string text, std::size_t width) {
    const std::size_t columns = columns_of(text);
    if (columns < width) text.append(width - columns, ' ');
    return text;
}

std::string printable(std::string_view text) {
    std::string line;
    append_printable(line, text);
    return line;
}

std::string shown_place(const Trouble& trouble) {
    return trouble.place.empty() ? "the whole configuration" : printable(trouble.place);
}

}  // namespace

std::vector<Share> shares_of(const Tally& tally) {
    return {{"convert without a word", "clean", tally.converted - tally.troubled},
            {"convert with warnings", "warned", tally.troubled - tally.lossy},
            {"convert and lose something", "lossy", tally.lossy},
            {"are rejected", "rejected", tally.rejected}};
}

std::string places_of(const std::vector<Trouble>& troubles) {
    std::size_t widest = 5;
    for (const Trouble& trouble : troubles) widest = std::max(widest, columns_of(shown_place(trouble)));
    std::string lines =
        right("devices", kWidestNumber) + "  " + left("what", 12) + left("place", widest + 2) + "for example\n";
    for (const Trouble& trouble : troubles)
        lines += right(grouped(trouble.devices), kWidestNumber) + "  " + left(trouble.kind, 12) +
                 left(shown_place(trouble), widest + 2) + printable(trouble.example) + "\n";
    return lines;
}

std::string table_of(const Report& report) {
    std::string lines = right(grouped(report.tally.records), kWidestNumber) +
                        (report.tally.records == 1 ? "  device\n" : "  devices\n");
    for (const Share& share : shares_of(report.tally))
        lines += right(grouped(share.devices), kWidestNumber) + right(percent(share.devices, report.tally.records), 9) +
                 "  " + share.name + "\n";
    return report.troubles.empty() ? lines : lines + "\n" + places_of(report.troubles);
}

std::string json_places_of(const std::vector<Trouble>& troubles) {
    std::string array = "[";
    for (const Trouble& trouble : troubles) {
        std::string object;
        JsonLine()
            .text("place", trouble.place)
            .text("kind", trouble.kind)
            .number("devices", trouble.devices)
            .json("example", trouble.example)
            .append_to(object);
        object.pop_back();
        array.append(array.size() == 1 ? "" : ", ").append(object);
    }
    return array + "]";
}

std::string json_of(const Report& report) {
    std::string lines;
    JsonLine line;
    line.number("records", report.tally.records);
    for (const Share& share : shares_of(report.tally)) line.number(share.label, share.devices);
    line.number("bytes", report.tally.bytes)
        .json("seconds", report.seconds)
        .json("places", json_places_of(report.troubles))
        .append_to(lines);
    return lines;
}

}  // namespace kcnvrt
