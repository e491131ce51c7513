// A printout laid out on pages and written as a PDF, read back by another program.
#include <QBuffer>
#include <QImage>
#include <QPainter>
#include <fstream>
#include <system_error>

#include <gtest/gtest.h>

#include "printing/render/print.h"
#include "support/pdf_text.h"
#include "support/test_agency.h"

namespace kv {
namespace {

using test::PdfPages;

std::size_t Count(const std::string& text, const std::string& piece) {
    std::size_t count = 0;
    for (std::size_t at = text.find(piece); at != std::string::npos; at = text.find(piece, at + 1)) {
        ++count;
    }
    return count;
}

class Render : public ::testing::Test {
  protected:
    std::vector<std::string> Saved(const Document& document) {
        const auto file = folder_.Path() / "out.pdf";
        SavePdf(PageLayout(document), file);
        return PdfPages(file);
    }

    test::TempFolder folder_;
};

TEST_F(Render, ATableRunsOverPagesWithItsHeadingsAndNumbers) {
    Document document("Long list");
    document.Heading(1, "Removed visits");
    Table& table = document.AddTable({{"Client", 2}, {"Hours", 1, Align::Right}, {"Reason"}});
    for (int row = 1; row <= 120; ++row) {
        table.rows.push_back({"Client " + std::to_string(row), "4.00",
                              row == 60 ? "a reason that is far too long for one line of its column, so that "
                                          "it goes on below and the row grows with it"
                                        : "left"});
    }
    const std::vector<std::string> pages = Saved(document);
    ASSERT_GE(pages.size(), 3U);
    int next = 1;
    for (std::size_t page = 0; page < pages.size(); ++page) {
        const std::string number =
            "Page " + std::to_string(page + 1) + " of " + std::to_string(pages.size()) + "\n";
        EXPECT_EQ(Count(pages[page], "Client Hours Reason\n"), 1U) << pages[page];
        EXPECT_TRUE(pages[page].ends_with(number)) << pages[page];
        // Every row once, in order, over the pages.
        for (; Count(pages[page], "Client " + std::to_string(next) + " 4.00") == 1; ++next) {
        }
    }
    EXPECT_EQ(next, 121);
    EXPECT_EQ(Count(pages[0], "Removed visits"), 1U);
}

TEST_F(Render, AChartOfDaysRepeatsItsHours) {
    Document document("Days");
    document.page.orientation = Orientation::Landscape;
    DayChart chart;
    chart.columns = {{"Name", 1.5}, {"Left", 0.6, Align::Right}};
    for (int row = 1; row <= 90; ++row) {
        DayChart::Row line;
        line.cells = {"Caregiver " + std::to_string(row), "12.5"};
        line.spans = {{9 * 60, 17 * 60, "Ivy " + std::to_string(row)},
                      {20 * 60, 20 * 60 + 15, "Too long a word"}};
        chart.rows.push_back(std::move(line));
    }
    document.Add(std::move(chart));
    const std::vector<std::string> pages = Saved(document);
    ASSERT_GE(pages.size(), 2U);
    int next = 1;
    for (const std::string& page : pages) {
        EXPECT_EQ(Count(page, "Name Left 12 AM 2 AM"), 1U) << page;
        EXPECT_EQ(Count(page, "Too"), 0U) << "a word that its bar is too narrow for is left out";
        for (; Count(page,
                     "Caregiver " + std::to_string(next) + " 12.5 Ivy " + std::to_string(next) + "\n") == 1;
             ++next) {
        }
    }
    EXPECT_EQ(next, 91);
}

TEST_F(Render, AHeadingStaysWithWhatItHeads) {
    Document document("Headings");
    for (int line = 0; line < 52; ++line) {
        document.Line("running text");
        document.Heading(2, "Heading " + std::to_string(line));
    }
    document.Line("last line");
    const std::vector<std::string> pages = Saved(document);
    ASSERT_GT(pages.size(), 1U);
    for (const std::string& page : pages) {
        const std::string body = page.substr(0, page.rfind("Page "));
        const std::string last = body.substr(body.rfind('\n', body.size() - 2) + 1);
        EXPECT_FALSE(last.starts_with("Heading")) << page;
    }
}

TEST_F(Render, BreaksHooksAndAlphabetsOfAllKinds) {
    Document document("Mixed");
    document.page.orientation = Orientation::Landscape;
    document.header = [](int page, int) { return PageStrip{"Agency", "", page == 1 ? "first" : "later"}; };
    document.footer = [](int page, int pages) {
        return PageStrip{"", "", std::to_string(page) + "/" + std::to_string(pages)};
    };
    document.Line("Zo\xC3\xAB \xC5\x81uk \xD0\x96\nsecond line");
    document.BreakPage();
    document.Add(BarChart{{{"Hospital", 12}, {"Friend", 3.5}, {"Nobody", 0}}});
    document.BreakPage();  // nothing follows, so no empty page is printed
    const PageLayout layout(document);
    EXPECT_EQ(layout.PageSize(), QSizeF(11, 8.5));
    const std::vector<std::string> pages = Saved(document);
    ASSERT_EQ(pages.size(), 2U);
    EXPECT_EQ(pages[0], "Agency first\nZo\xC3\xAB \xC5\x81uk \xD0\x96\nsecond line\n1/2\n");
    EXPECT_EQ(pages[1], "Agency later\nHospital 12\nFriend 3.50\nNobody 0\n2/2\n");
}

TEST_F(Render, APictureIsFittedAndABrokenOneIsSaid) {
    QImage image(400, 8000, QImage::Format_RGB32);
    image.fill(Qt::red);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    Document document("Pictures");
    document.Line("above");
    document.Add(Picture{bytes.toStdString(), 0, 3});
    document.Add(Picture{"no picture", 0, 3});
    const PageLayout layout(document);
    const std::vector<std::string> pages = Saved(document);
    ASSERT_EQ(pages.size(), 3U) << "the tall picture fills a page of its own";
    EXPECT_EQ(Count(pages[2], "(This picture can not be shown.)"), 1U);

    QImage drawn(850, 1100, QImage::Format_RGB32);
    drawn.fill(Qt::white);
    QPainter painter(&drawn);
    layout.Draw(painter, 2, 100);
    EXPECT_EQ(drawn.pixelColor(80, 500), QColor(Qt::red));
    EXPECT_EQ(drawn.pixelColor(40, 500), QColor(Qt::white)) << "nothing in the margin";
    EXPECT_EQ(drawn.pixelColor(80, 1060), QColor(Qt::white));
}

TEST_F(Render, AFileThatCanNotBeWrittenIsSaidAndLeavesTheOldOne) {
    Document document("Doc");
    document.Line("text");
    EXPECT_THROW(SavePdf(PageLayout(document), folder_.Path() / "none" / "out.pdf"), std::system_error);
    const auto file = folder_.Path() / "taken.pdf";
    std::filesystem::create_directory(file);
    EXPECT_THROW(SavePdf(PageLayout(document), file), std::system_error);
    EXPECT_TRUE(std::filesystem::is_directory(file));
    for (const auto& entry : std::filesystem::directory_iterator(folder_.Path())) {
        EXPECT_EQ(entry.path(), file) << "no piece of a file is left over";
    }
}

}  // namespace
}  // namespace kv
