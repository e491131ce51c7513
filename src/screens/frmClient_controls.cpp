#include "screens/frmClient_controls.h"

#include <QToolButton>

#include "clients/client_texts.h"
#include "clients/phone_digits.h"
#include "screens/widgets/combos.h"
#include "screens/widgets/masked_box.h"
#include "screens/widgets/qt_text.h"
#include "screens/widgets/theme.h"

namespace kv {

MaskedBox* MakePhone(const QString& name, const QString& caption, QWidget* parent) {
    auto* box = new MaskedBox(name, caption, QString::fromLatin1(mask::kPhone), parent);
    box->SetPasteRule([](const QString& text) { return ToQt(PhoneDigits(FromQt(text))); });
    return box;
}

LookupCombo* MakeClearable(const QString& name, const QString& caption, int characters, QWidget* parent) {
    auto* combo = new LookupCombo(name, caption, characters, parent);
    combo->setToolTip(QString::fromLatin1(kDoubleClickToClear));
    return combo;
}

PlainCombo* MakeOffering(const QString& name, const QString& caption, int characters, QWidget* parent) {
    return new PlainCombo(name, caption, PlainCombo::Style::Editable, characters, parent);
}

void FillFixedList(PlainCombo& combo) {
    QStringList items;
    for (const std::string_view item : FixedListOf(FromQt(combo.objectName())).items) {
        items << ToQt(item);
    }
    combo.SetItems(items);
}

QToolButton* MakeSmallButton(const QString& name, const QString& icon, const QString& tip, QWidget* parent) {
    auto* button = new QToolButton(parent);
    button->setObjectName(name);
    button->setIcon(theme::Icon(icon));
    button->setText(tip);
    button->setToolTip(tip);
    button->setAccessibleName(tip);
    button->setFocusPolicy(Qt::StrongFocus);
    return button;
}

}  // namespace kv
