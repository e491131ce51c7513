// The print preview, what it asks and what it prints.
#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QSpinBox>
#include <QTest>

#include <gtest/gtest.h>

#include "screens/frmCopies.h"
#include "screens/frmPrint.h"
#include "screens/widgets/preview_pages.h"
#include "screens/widgets/qt_text.h"
#include "screens/widgets/tool_bar.h"
#include "support/pdf_text.h"
#include "support/qt_driver.h"
#include "support/test_agency.h"

namespace kv {
namespace {

using Lines = std::vector<std::string>;

class Preview : public ::testing::Test {
  protected:
    static Document Pages(int count) {
        Document document("Pages");
        for (int page = 1; page <= count; ++page) {
            document.Line("This is leaf " + std::to_string(page));
            document.BreakPage();
        }
        return document;
    }
    frmPrint& Open(int pages) {
        screen_ = std::make_unique<frmPrint>(agency.session(), Pages(pages));
        screen_->HasPrinter = [] { return true; };
        screen_->Print = [this](int from, int to, int copies) {
            printed_.push_back(std::to_string(from) + "-" + std::to_string(to) + " x" +
                               std::to_string(copies));
            return printerWorks_;
        };
        qt_driver::Show(*screen_);
        return *screen_;
    }
    void Press(const char* key) { screen_->Toolbar1->ActionOf(QString::fromLatin1(key))->trigger(); }
    std::string PageText() { return FromQt(screen_->lblPage->text()); }
    /// Presses "print" and acts on frmCopies.
    Lines Printed(const std::function<void(frmCopies&)>& act) {
        printed_.clear();
        const qt_driver::ModalDriver driver([&act](QWidget& modal) {
            auto* copies = qobject_cast<frmCopies*>(&modal);
            ASSERT_NE(copies, nullptr);
            act(*copies);
        });
        Press("print");
        return printed_;
    }
    static void Ok(frmCopies& copies) { copies.CMDok[1]->click(); }

    test::TestAgency agency;
    std::unique_ptr<frmPrint> screen_;
    Lines printed_;
    bool printerWorks_ = true;
};

TEST_F(Preview, MovesInsideTheDocument) {
    Open(5);
    EXPECT_EQ(PageText(), "1 of 5");
    Press("previous");
    EXPECT_EQ(PageText(), "1 of 5");
    Press("next");
    EXPECT_EQ(PageText(), "2 of 5");
    Press("last");
    Press("next");
    EXPECT_EQ(PageText(), "5 of 5");
    screen_->scrlPage->setValue(3);
    EXPECT_EQ(PageText(), "3 of 5");

    agency.ports.dialogs.Input({"4", "9", "x", "0", std::nullopt});
    for (int i = 0; i < 5; ++i) {
        Press("goto");
        EXPECT_EQ(PageText(), "4 of 5") << "only a page of the document is gone to";
    }
    Press("first");
    EXPECT_EQ(PageText(), "1 of 5");

    screen_->cmbZoomMode->setCurrentText(QStringLiteral("TwoPages"));
    EXPECT_EQ(PageText(), "1 - 2 of 5");
    Press("next");
    EXPECT_EQ(PageText(), "3 - 4 of 5");
    Press("next");
    Press("next");
    EXPECT_EQ(PageText(), "5 of 5");
    Press("previous");
    EXPECT_EQ(PageText(), "3 - 4 of 5");
}

TEST_F(Preview, OnePageStaysOnIt) {
    Open(1);
    Press("next");
    Press("last");
    EXPECT_EQ(PageText(), "1 of 1");
    EXPECT_FALSE(screen_->scrlPage->isVisible());
}

TEST_F(Preview, APercentageIsAModeOfItsOwn) {
    Open(1);
    EXPECT_FALSE(screen_->cmbPercent->isEnabled());
    screen_->cmbPercent->setCurrentText(QStringLiteral("200%"));
    EXPECT_EQ(screen_->cmbZoomMode->currentText(), QStringLiteral("Percentage"));
    EXPECT_TRUE(screen_->cmbPercent->isEnabled());
    EXPECT_EQ(screen_->VP->Mode(), ZoomMode::Percentage);
    screen_->cmbZoomMode->setCurrentText(QStringLiteral("WholePage"));
    EXPECT_FALSE(screen_->cmbPercent->isEnabled());
}

TEST_F(Preview, PrintsTheRangeAndTheCopies) {
    Open(5);
    Press("next");
    EXPECT_EQ(Printed([](frmCopies& copies) { copies.CMDok[0]->click(); }), Lines());
    EXPECT_EQ(Printed([](frmCopies& copies) { copies.close(); }), Lines());
    EXPECT_EQ(Printed([](frmCopies& copies) {
                  EXPECT_EQ(copies.Label2->text(), QStringLiteral("All 5 Pages"));
                  EXPECT_FALSE(copies.numFrom->isEnabled());
                  Ok(copies);
              }),
              Lines{"1-5 x1"});
    EXPECT_EQ(Printed([](frmCopies& copies) {
                  copies.optSelect->click();
                  copies.Numnum->setValue(3);
                  Ok(copies);
              }),
              Lines{"2-2 x3"});
    EXPECT_EQ(Printed([](frmCopies& copies) {
                  copies.optFrom->click();
                  copies.numFrom->setValue(4);
                  copies.numTo->setValue(99);
                  copies.numFrom->setValue(0);
                  EXPECT_EQ(copies.numTo->value(), 5);
                  EXPECT_EQ(copies.numFrom->value(), 1);
                  copies.numTo->setValue(3);
                  copies.Numnum->setValue(2);
                  copies.chkCollate->setChecked(true);
                  Ok(copies);
              }),
              (Lines{"1-3 x1", "1-3 x1"}));
    EXPECT_EQ(agency.Said(), Lines());

    printerWorks_ = false;
    EXPECT_EQ(Printed([](frmCopies& copies) {
                  copies.Numnum->setValue(2);
                  copies.chkCollate->setChecked(true);
                  Ok(copies);
              }),
              Lines{"1-5 x1"});
    EXPECT_EQ(agency.Said(), Lines{"message: The printer did not take the pages. Please look at the "
                                   "printer's setup."});
    screen_->HasPrinter = [] { return false; };
    Press("print");
    EXPECT_EQ(agency.Said(), Lines{"message: This computer has no printer. The PDF key keeps the pages as a "
                                   "file."});
}

TEST_F(Preview, KeepsThePagesAsPdf) {
    Open(2);
    const test::TempFolder folder;
    screen_->AskPdfFile = [&] { return ToQt((folder.Path() / "kept").string()); };
    Press("pdf");
    EXPECT_EQ(agency.Said(), Lines());
    EXPECT_EQ(test::PdfPages(folder.Path() / "kept.pdf"),
              (Lines{"This is leaf 1\nPage 1 of 2\n", "This is leaf 2\nPage 2 of 2\n"}));
    screen_->AskPdfFile = [&] { return ToQt((folder.Path() / "no" / "kept.pdf").string()); };
    Press("pdf");
    const Lines said = agency.Said();
    ASSERT_EQ(said.size(), 1U);
    EXPECT_TRUE(said[0].starts_with("message: The PDF could not be saved: ")) << said[0];
}

}  // namespace
}  // namespace kv
