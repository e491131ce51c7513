#include "clients/quick_find.h"

namespace kv {

bool QuickFindClient(Session& session, ClientForm& form, const std::string& text,
                     const QuickFindChooser& choose) {
    if (!MayQuickFind(session, form, text)) {
        return false;
    }
    const std::vector<QuickFindRow> hits = QuickFind(form.List(), text);
    std::string id;
    if (hits.size() == 1) {
        id = hits.front().id;
    } else if (!hits.empty()) {
        id = choose(hits);
    }
    return MoveToQuickFound(session, form, id);
}

}  // namespace kv
