#pragma once
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace kv {

// A printout as data: what stands on it, not where the page breaks fall. Rules build it, tests read it, and
// printing/render lays it out on a printer, a PDF or the preview. Texts are UTF-8, lengths are inches, type
// sizes points.

struct TextStyle {
    std::string font;   ///< a family, "Courier New"; empty for the document's own
    double points = 0;  ///< 0 for the document's own
    bool bold = false;
    bool italic = false;
    bool underline = false;
};

struct TextRun {
    std::string text;  ///< "\n" is a line break
    TextStyle style;
};

enum class Align { Left, Center, Right };

struct Paragraph {
    std::vector<TextRun> runs;
    Align align = Align::Left;
    double indent = 0;
    double spaceBefore = 0;
    double spaceAfter = 0;
    int heading = 0;            ///< 0 for running text, 1 for the title, 2 and 3 below it
    bool keepWithNext = false;  ///< no page break between it and what follows
};

struct TableColumn {
    std::string heading;
    double width = 0;  ///< 0: a share of what the others leave
    Align align = Align::Left;
};

/// Its headings are repeated on each page that it runs over; a row is never torn.
struct Table {
    std::vector<TableColumn> columns;
    std::vector<std::vector<std::string>> rows;
    TextStyle style;
    bool lines = true;
    double indent = 0;
};

struct Picture {
    std::string bytes;  ///< an image file's content: PNG, JPEG or BMP
    double indent = 0;
    double width = 0;  ///< the height follows; 0 for the picture's own size
};

/// Horizontal bars, longest name to the left, the value behind each bar.
struct BarChart {
    std::vector<std::pair<std::string, double>> bars;
};

/// Rows of a day each: cells to the left, and to the right what occupies the hours from midnight to midnight.
/// The headings and the hours are repeated on each page.
struct DayChart {
    struct Span {
        int from = 0;  ///< minutes since midnight
        int to = 0;
        std::string text;
    };
    struct Row {
        std::vector<std::string> cells;
        std::vector<Span> spans;
    };
    std::vector<TableColumn> columns;  ///< of the cells; each with its width
    std::vector<Row> rows;
};

struct PageBreak {};

using Block = std::variant<Paragraph, Table, Picture, BarChart, DayChart, PageBreak>;

/// The three texts of a header or footer line.
struct PageStrip {
    std::string left;
    std::string center;
    std::string right;
};

/// Draws a page's strip when its number and the number of all pages are known; both count from 1.
using PageHook = std::function<PageStrip(int page, int pages)>;

enum class Orientation { Portrait, Landscape };

/// Letter paper, as the trade uses it.
struct PageSetup {
    Orientation orientation = Orientation::Portrait;
    double left = 0.75;
    double top = 0.75;
    double right = 0.75;
    double bottom = 0.75;
};

class Document {
  public:
    explicit Document(std::string title) : title_(std::move(title)) {}

    /// The name of the print job and of the preview's window; not drawn.
    const std::string& Title() const { return title_; }
    const std::vector<Block>& Blocks() const { return blocks_; }

    PageSetup page;
    TextStyle style{"Helvetica", 10};  ///< of all text that names no other
    PageHook header;                   ///< empty for none
    PageHook footer;                   ///< "Page 1 of 3" in the middle where nothing else is set

    /// One line of running text; an empty one is an empty line.
    Paragraph& Line(std::string text, const TextStyle& style = {});
    Paragraph& Heading(int level, std::string text);
    Table& AddTable(std::vector<TableColumn> columns);
    void Add(Block block) { blocks_.push_back(std::move(block)); }
    void BreakPage() { Add(PageBreak{}); }

  private:
    std::string title_;
    std::vector<Block> blocks_;
};

/// All text of a document in reading order, line by line, the cells of a table's row joined by " | "; what a
/// test compares.
std::string PlainText(const Document& document);

}  // namespace kv
