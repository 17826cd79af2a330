#include "summary.h"

#include "print/json_line.h"
#include "print/numbers.h"

namespace kcnvrt {

namespace {

std::string json_summary(const Report& report, bool has_losses) {
    const Tally& tally = report.tally;
    JsonLine line;
    line.number("records", tally.records)
        .number("converted", tally.converted)
        .number("warned", tally.warned)
        .number("rejected", tally.rejected)
        .number("bytes", tally.bytes)
        .json("seconds", report.seconds);
    if (tally.left != 0) line.number("left", tally.left);
    if (has_losses) line.number("lossy", tally.lossy).json("places", json_places_of(report.troubles));
    std::string text;
    line.append_to(text);
    return text;
}

std::string text_summary(const Report& report, const Subject& subject) {
    const Tally& tally = report.tally;
    std::string text = counted(tally.records, subject.one, subject.many) + ": " + grouped(tally.converted) + " " +
                       subject.good + " (" + grouped(tally.warned) + " with warnings";
    if (subject.has_losses) text += ", " + grouped(tally.lossy) + " with losses";
    text += "), " + grouped(tally.rejected) + " rejected; " + counted(tally.bytes, "byte", "bytes") + " in " +
            report.seconds + " s";
    if (tally.left != 0) text += "; " + grouped(tally.left) + " left alone";
    text += "\n";
    return report.troubles.empty() ? text : text + "\n" + places_of(report.troubles);
}

}  // namespace

std::string summary_of(const Report& report, SummaryFormat format, const Subject& subject) {
    if (format == SummaryFormat::kNone) return "";
    return format == SummaryFormat::kJson ? json_summary(report, subject.has_losses) : text_summary(report, subject);
}

}  // namespace kcnvrt
