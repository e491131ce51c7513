#pragma once
#include <QScrollArea>
#include <utility>
#include <vector>

namespace kv {

class BoundControl;
class BoundSource;

/// One of the seven parts of a client, a page behind CMDclient. It scrolls where the window is too small.
class ClientPart : public QScrollArea {
    Q_OBJECT
  public:
    /// The page's frame bears the name.
    ClientPart(const QString& frame, QWidget* parent);

    using Tie = std::pair<BoundControl*, const char*>;
    /// The controls with the columns of ClientPR that they are bound to, in reading order.
    virtual std::vector<Tie> Ties() const { return {}; }
    void BindTo(BoundSource& source) const;
    /// Puts the focus in the part's first box.
    void FocusFirst();

  protected:
    QWidget* Frame() const { return widget(); }
};

}  // namespace kv
