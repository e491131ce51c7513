#pragma once
#include <QString>

class QToolButton;
class QWidget;

namespace kv {

class LookupCombo;
class MaskedBox;
class PlainCombo;

// Controls as several parts of the main screen have them.

/// A phone with its mask; what is pasted goes through PhoneDigits.
MaskedBox* MakePhone(const QString& name, const QString& caption, QWidget* parent);
/// A look-up that a left double click empties.
LookupCombo* MakeClearable(const QString& name, const QString& caption, int characters, QWidget* parent);
/// A combo that offers texts and takes others too, as rows hold texts that are no longer offered.
PlainCombo* MakeOffering(const QString& name, const QString& caption, int characters, QWidget* parent);
/// The items that never change of a combo, by its name.
void FillFixedList(PlainCombo& combo);
/// A small button with a picture that belongs to a box.
QToolButton* MakeSmallButton(const QString& name, const QString& icon, const QString& tip, QWidget* parent);

}  // namespace kv
