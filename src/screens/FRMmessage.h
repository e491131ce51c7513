#pragma once
#include <QDialog>

class QCheckBox;
class QLabel;
class QProgressBar;
class QPushButton;
class QTimer;

namespace kv {

/// "System Message": says one thing and closes by itself, later the longer the words are. Any key or click
/// closes it at once. With "Use Timer" clear it waits.
class FRMmessage : public QDialog {
    Q_OBJECT
  public:
    struct Countdown {
        int seconds;
        /// The number in the first text. For short messages it is one above the countdown, as the operators
        /// know it.
        int firstShown;
    };
    /// By the length of the trimmed message.
    static Countdown CountdownOf(const QString& message);

    explicit FRMmessage(QWidget* parent = nullptr);

    void SetMessage(const QString& message);
    /// A free note below the message; hidden while empty.
    void SetNotes(const QString& notes);
    /// A bar below the message; hidden for 0 steps.
    void SetProgress(int value, int steps);
    int Count() const { return count_; }

    /// One second has gone; Timer1 calls it.
    void Tick();
    /// The next of the ten pictures; Timer2 calls it.
    void NextPicture();
    int PictureIndex() const { return picture_; }

    QLabel* Label1 = nullptr;
    QLabel* Label2 = nullptr;
    QLabel* LBLcount = nullptr;
    QLabel* Image1 = nullptr;
    QLabel* TXTnotes = nullptr;
    QCheckBox* Check1 = nullptr;
    QProgressBar* Pbar = nullptr;
    QPushButton* Command1 = nullptr;
    QTimer* Timer1 = nullptr;
    QTimer* Timer2 = nullptr;

  protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void UseTimer(bool use);
    void ShowCount(int number);
    bool CloseByKey(const QKeyEvent& event);
    void ClosePressed();

    int count_ = 0;
    int picture_ = 0;
};

}  // namespace kv
