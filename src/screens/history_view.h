#pragma once
#include <QWidget>
#include <vector>

#include "clients/change_history.h"

class QLabel;
class QPlainTextEdit;

namespace kv {

class Grid;

/// A list of changes, the latest first, over the words of the one that is picked.
class HistoryView : public QWidget {
    Q_OBJECT
  public:
    HistoryView(const QString& emptyText, QWidget* parent);
    /// Shows the rows, and the first one's words.
    void SetRows(const std::vector<HistoryRow>& rows);
    int CurrentRow() const;
    void SetCurrentRow(int row);

    Grid* FGedit = nullptr;
    QPlainTextEdit* Text2 = nullptr;  ///< the row's area and reason

  private:
    void ShowWords(int row);

    std::vector<std::string> words_;
};

}  // namespace kv
