#include "forms/fields/FieldLock.h"

#include "forms/lists/ListView.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRadioButton>

namespace
{
void Recolour(QWidget *field, bool locked)
{
    QPalette palette;
    if (locked) {
        palette.setColor(QPalette::Base, field->palette().color(QPalette::Window));
        palette.setColor(QPalette::Disabled, QPalette::Text,
                         field->palette().color(QPalette::Active, QPalette::Text));
    }
    field->setPalette(palette);
    field->setFocusPolicy(locked ? Qt::ClickFocus : Qt::StrongFocus);
}

/// A locked field is still there to be read, so it is not greyed like a disabled one.
void KeepReadable(QWidget *field, bool locked)
{
    QPalette palette;
    if (locked)
        palette.setColor(QPalette::Disabled, QPalette::Base, field->palette().color(QPalette::Window));
    for (const QPalette::ColorRole role : {QPalette::Text, QPalette::ButtonText, QPalette::WindowText}) {
        if (locked)
            palette.setColor(QPalette::Disabled, role, field->palette().color(QPalette::Active, role));
    }
    field->setPalette(palette);
}

bool IsPartOfAnother(const QWidget *field)
{
    return qobject_cast<const QComboBox *>(field->parentWidget());
}

void LockOne(QWidget *field, bool locked)
{
    if (auto *text = qobject_cast<QLineEdit *>(field)) {
        if (IsPartOfAnother(text))
            return;
        text->setReadOnly(locked);
        Recolour(text, locked);
    } else if (auto *notes = qobject_cast<QPlainTextEdit *>(field)) {
        notes->setReadOnly(locked);
        Recolour(notes, locked);
    } else if (auto *list = qobject_cast<ListView *>(field)) {
        list->SetLocked(locked);
    } else if (qobject_cast<QComboBox *>(field) || qobject_cast<QCheckBox *>(field) ||
               qobject_cast<QRadioButton *>(field)) {
        field->setEnabled(!locked);
        KeepReadable(field, locked);
    }
}
} // namespace

void LockFields(QWidget *root, bool locked)
{
    LockOne(root, locked);
    for (QWidget *field : root->findChildren<QWidget *>())
        LockOne(field, locked);
}

void EnableButton(QAbstractButton *button, bool enabled, QWidget *next)
{
    if (!enabled && button->window()->focusWidget() == button)
        next->setFocus();
    button->setEnabled(enabled);
}
