#include "printing/document/document.h"

namespace kv {
namespace {

void AppendRow(std::string& out, const std::vector<std::string>& cells) {
    for (std::size_t i = 0; i < cells.size(); ++i) {
        out += i == 0 ? "" : " | ";
        out += cells[i];
    }
    out += '\n';
}

std::string ClockText(int minute) {
    constexpr int kHour = 60;
    const auto two = [](int number) { return (number < 10 ? "0" : "") + std::to_string(number); };
    return two(minute / kHour) + ":" + two(minute % kHour);
}

struct PlainTextOf {
    std::string& out;

    void operator()(const Paragraph& paragraph) const {
        for (const TextRun& run : paragraph.runs)
            out += run.text;
        out += '\n';
    }
    void operator()(const Table& table) const {
        std::vector<std::string> headings;
        for (const TableColumn& column : table.columns)
            headings.push_back(column.heading);
        AppendRow(out, headings);
        for (const auto& row : table.rows)
            AppendRow(out, row);
    }
    void operator()(const Picture& /*picture*/) const { out += "[picture]\n"; }
    void operator()(const BarChart& chart) const {
        for (const auto& [name, value] : chart.bars)
            AppendRow(out, {name, std::to_string(value)});
    }
    void operator()(const DayChart& chart) const {
        for (const DayChart::Row& row : chart.rows) {
            std::vector<std::string> cells = row.cells;
            for (const DayChart::Span& span : row.spans)
                cells.push_back(ClockText(span.from) + "-" + ClockText(span.to) + " " + span.text);
            AppendRow(out, cells);
        }
    }
    void operator()(const PageBreak& /*pageBreak*/) const { out += '\f'; }
};

}  // namespace

Paragraph& Document::Line(std::string text, const TextStyle& lineStyle) {
    Paragraph paragraph;
    paragraph.runs.push_back({std::move(text), lineStyle});
    return std::get<Paragraph>(blocks_.emplace_back(std::move(paragraph)));
}

Paragraph& Document::Heading(int level, std::string text) {
    Paragraph& paragraph = Line(std::move(text));
    paragraph.heading = level;
    paragraph.keepWithNext = true;
    return paragraph;
}

Table& Document::AddTable(std::vector<TableColumn> columns) {
    Table table;
    table.columns = std::move(columns);
    return std::get<Table>(blocks_.emplace_back(std::move(table)));
}

std::string PlainText(const Document& document) {
    std::string out;
    for (const Block& block : document.Blocks())
        std::visit(PlainTextOf{out}, block);
    return out;
}

}  // namespace kv
