#pragma once

#include "contacts/lists/VocabularyModule.h"

#include <QString>

class FormBuilder;
class QGroupBox;
class QLineEdit;
class QPushButton;
class TypedCombo;

/// What several pages of a person's record do alike.
namespace ContactFields
{
/// Four address lines under one caption, named `name` + "1" to "4".
void AddressLines(FormBuilder &form, const QString &name, bool readOnly, QLineEdit *(&lines)[4]);
/// A button after the field made last that writes to its e-mail address; nothing where that is empty.
QPushButton *MailButton(FormBuilder &form, const QString &name, QLineEdit *address);
/// A button after the field made last that opens its web address; nothing where that is empty.
QPushButton *WebButton(FormBuilder &form, const QString &name, QLineEdit *address);
/// Shows a text from its beginning.
void Show(QLineEdit *field, const QString &text);
/// Keeps a field wide enough for that many characters.
void FitChars(QLineEdit *field, int chars);
/// Makes the first captions of several groups, which are in one column, as wide as the widest, so that the
/// fields line up.
void AlignCaptions(const QList<QGroupBox *> &groups);
/// Chooses what is stored. Where another workstation added it since the list was filled, that is filled again
/// with its select row.
void ChooseStored(ContactSection code, ComboModel &list, int reference);
/// What is chosen in a list, as it is stored: 1 where nothing is, or where another workstation deleted it,
/// which the user is told.
int ChosenToStore(ContactSection code, TypedCombo *list);
/// Lets new text typed in the list go to its vocabulary, if the user may add and change there.
void TakeTyped(TypedCombo *list, ContactSection code);
} // namespace ContactFields
