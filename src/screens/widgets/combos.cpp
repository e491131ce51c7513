#include "screens/widgets/combos.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QLineEdit>
#include <QMouseEvent>
#include <QScrollBar>
#include <algorithm>
#include <functional>

#include "base/text.h"
#include "screens/widgets/qt_text.h"
#include "screens/widgets/theme.h"

namespace kv {

namespace {

constexpr int kMostVisible = 20;
constexpr int kWord = 10;

/// As wide as so many characters, with Qt's room for frame and arrow.
QSize ComboHint(const QComboBox& combo, QSize hint, int characters) {
    QStyleOptionComboBox option;
    option.initFrom(&combo);
    option.editable = combo.isEditable();
    const QSize content(theme::CharactersWide(combo, characters), combo.fontMetrics().height());
    const int width = combo.style()->sizeFromContents(QStyle::CT_ComboBox, &option, content, &combo).width();
    return {width, hint.height()};
}

/// The drop-down takes the width of its longest item and the height of its list, within reason.
void SizeDropDown(QComboBox& combo) {
    int widest = 0;
    for (int i = 0; i < combo.count(); ++i) {
        widest = std::max(widest, combo.fontMetrics().horizontalAdvance(combo.itemText(i)));
    }
    QAbstractItemView* list = combo.view();
    const int around = 3 * theme::kUnit + list->verticalScrollBar()->sizeHint().width();
    list->setMinimumWidth(std::min(widest + around, 640));
    combo.setMaxVisibleItems(std::clamp(combo.count(), 1, kMostVisible));
}

int FindItem(const QComboBox& combo, const QString& text) {
    const int exact = combo.findText(text, Qt::MatchFixedString | Qt::MatchCaseSensitive);
    return exact >= 0 ? exact : combo.findText(text, Qt::MatchFixedString);
}

/// The item that shows: the picked one where it has the text (two items may read alike), else the first that
/// has it.
int ShownItem(const QComboBox& combo) {
    const QString text = combo.currentText();
    const int picked = combo.currentIndex();
    return picked >= 0 && combo.itemText(picked) == text ? picked : FindItem(combo, text);
}

void PassWheelOn(QWheelEvent* event) {
    // Rolling over a form must not change the records in it.
    event->ignore();
}

}  // namespace

PlainCombo::PlainCombo(const QString& name, const QString& caption, Style style, int characters,
                       QWidget* parent)
    : QComboBox(parent), BoundControl(this, ControlKind::Combo), characters_(characters) {
    setEditable(style == Style::Editable);
    setInsertPolicy(QComboBox::NoInsert);
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
    SetUp(name, caption);
    if (isEditable()) {
        connect(this, &QComboBox::editTextChanged, this, [this] { NoteChange(); });
    } else {
        connect(this, &QComboBox::currentIndexChanged, this, [this] { NoteChange(); });
    }
}

kv::Value PlainCombo::Value() const {
    return FromQt(currentText());
}

void PlainCombo::SetText(const QString& text) {
    EnterValue(FromQt(text));
}

void PlainCombo::SetItems(const QStringList& items, const QStringList& keys) {
    const QString shown = currentText();
    Quietly([&] {
        clear();
        for (int i = 0; i < items.size(); ++i) {
            addItem(items[i], keys.value(i));
        }
        Show(FromQt(shown));
    });
    SizeDropDown(*this);
}

void PlainCombo::SetItems(const std::vector<std::string>& items) {
    QStringList texts;
    for (const std::string& item : items) {
        texts << ToQt(item);
    }
    SetItems(texts);
}

QStringList PlainCombo::Items() const {
    QStringList items;
    for (int i = 0; i < count(); ++i) {
        items << itemText(i);
    }
    return items;
}

QString PlainCombo::Key() const {
    return itemData(ShownItem(*this)).toString();
}

bool PlainCombo::PickKey(const QString& key) {
    const int item = findData(key);
    setCurrentIndex(item);
    return item >= 0;
}

void PlainCombo::SetKeyed(const QString& text, const QString& key) {
    SetValue(FromQt(text));
    if (const int item = findData(key); item >= 0 && itemText(item) == text) {
        Quietly([&] { setCurrentIndex(item); });
    }
}

void PlainCombo::SetCharacters(int characters) {
    characters_ = characters;
    updateGeometry();
}

QSize PlainCombo::sizeHint() const {
    return ComboHint(*this, QComboBox::sizeHint(), characters_);
}

QSize PlainCombo::minimumSizeHint() const {
    return ComboHint(*this, QComboBox::sizeHint(), std::min(characters_, kWord));
}

void PlainCombo::Show(const kv::Value& value) {
    const QString text = ToQt(value.ToText());
    const int item = text.isEmpty() ? findText(text) : FindItem(*this, text);
    setCurrentIndex(item);
    if (isEditable()) {
        setEditText(text);
    }
}

void PlainCombo::wheelEvent(QWheelEvent* event) {
    PassWheelOn(event);
}

void PlainCombo::focusOutEvent(QFocusEvent* event) {
    QComboBox::focusOutEvent(event);
    if (event->reason() != Qt::PopupFocusReason) {
        RunRule();
    }
}

LookupCombo::LookupCombo(const QString& name, const QString& caption, int characters, QWidget* parent)
    : QComboBox(parent), BoundControl(this, ControlKind::LookupCombo), characters_(characters) {
    setEditable(true);
    setInsertPolicy(QComboBox::NoInsert);
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
    completer()->setCompletionMode(QCompleter::InlineCompletion);
    completer()->setCaseSensitivity(Qt::CaseInsensitive);
    SetUp(name, caption);
    lineEdit()->installEventFilter(this);
    connect(this, &QComboBox::editTextChanged, this, [this] { NoteChange(); });
}

kv::Value LookupCombo::Value() const {
    return BoundText();
}

std::string LookupCombo::BoundText() const {
    const int item = ShownItem(*this);
    return item >= 0 ? items_[static_cast<std::size_t>(item)].code : FromQt(currentText());
}

void LookupCombo::SetBoundText(const std::string& code) {
    EnterValue(code);
}

bool LookupCombo::IsInList() const {
    return ShownItem(*this) >= 0;
}

void LookupCombo::SetItems(std::vector<LookupItem> items) {
    const std::string code = BoundText();
    items_ = std::move(items);
    Quietly([&] {
        clear();
        for (const LookupItem& item : items_) {
            addItem(ToQt(item.description));
        }
        Show(code);
    });
    SizeDropDown(*this);
}

void LookupCombo::Clear() {
    EnterValue(std::string());
}

void LookupCombo::SetCharacters(int characters) {
    characters_ = characters;
    updateGeometry();
}

QSize LookupCombo::sizeHint() const {
    return ComboHint(*this, QComboBox::sizeHint(), characters_);
}

QSize LookupCombo::minimumSizeHint() const {
    return ComboHint(*this, QComboBox::sizeHint(), std::min(characters_, kWord));
}

bool LookupCombo::eventFilter(QObject* watched, QEvent* event) {
    if (watched == lineEdit() && event->type() == QEvent::MouseButtonDblClick && isEnabled() &&
        static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton &&
        toolTip() == QLatin1String(kDoubleClickToClear)) {
        Clear();
        return true;
    }
    return QComboBox::eventFilter(watched, event);
}

void LookupCombo::Show(const kv::Value& value) {
    const std::string code = value.ToText();
    const auto itemWhere = [&](auto equal) {
        return std::find_if(items_.begin(), items_.end(),
                            [&](const LookupItem& item) { return equal(item.code, code); });
    };
    auto found = itemWhere(std::equal_to<std::string>());
    if (found == items_.end()) {
        // The store takes codes in any case for one.
        found = itemWhere(EqualsNoCase);
    }
    if (code.empty() || found == items_.end()) {
        setCurrentIndex(-1);
        setEditText(ToQt(code));
        return;
    }
    setCurrentIndex(static_cast<int>(found - items_.begin()));
    setEditText(ToQt(found->description));
}

bool LookupCombo::Check() {
    const std::string entry = Trim(FromQt(currentText()));
    if (!entry.empty() && !IsInList()) {
        const auto typed = std::find_if(items_.begin(), items_.end(), [&](const LookupItem& item) {
            return EqualsNoCase(item.code, entry);
        });
        if (typed != items_.end()) {
            EnterValue(typed->code);
        }
    }
    const bool good = !listOnly_ || entry.empty() || IsInList();
    SetFault(good ? QString() : QStringLiteral("Not in the list"));
    return good;
}

void LookupCombo::focusOutEvent(QFocusEvent* event) {
    QComboBox::focusOutEvent(event);
    if (event->reason() != Qt::PopupFocusReason && IsDataChanged()) {
        Check();
        RunRule();
    }
}

void LookupCombo::wheelEvent(QWheelEvent* event) {
    PassWheelOn(event);
}

}  // namespace kv
