#pragma once

#include <QKeySequence>
#include <QString>

class QAbstractButton;
class QWidget;

/// Keys that work anywhere in a form, beside the mnemonics of its buttons.
namespace FormKeys
{
/// Makes `key` click `button` while it can be clicked. The tool tip says `what` the key does, or else what
/// the tip or the caption said, and the key.
void Bind(QWidget *form, const QKeySequence &key, QAbstractButton *button, const QString &what = {});
/// The standard key of a button by its caption (without mnemonic): Ctrl+N for "New ...", F5 for "Refresh".
QKeySequence StandardKey(const QString &caption);
/// Whether `key` does something in the form now.
bool Serves(const QWidget *form, const QKeySequence &key);
/// Does what the key does, for a menu that shows it.
void Press(const QWidget *form, const QKeySequence &key);
} // namespace FormKeys
