#pragma once
#include "screens/frmClient_part.h"

namespace kv {

class MemoBox;

/// The page of the way to the client.
class FRMdirections : public ClientPart {
    Q_OBJECT
  public:
    explicit FRMdirections(QWidget* parent);
    std::vector<Tie> Ties() const override;

    MemoBox* TXTdirections;
};

}  // namespace kv
