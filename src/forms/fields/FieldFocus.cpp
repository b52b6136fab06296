#include "forms/fields/FieldFocus.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTabWidget>

void FocusField(QWidget *field)
{
    for (QWidget *page = field; page; page = page->parentWidget()) {
        QWidget *stack = page->parentWidget();
        auto *tabs = stack ? qobject_cast<QTabWidget *>(stack->parentWidget()) : nullptr;
        if (tabs && tabs->indexOf(page) >= 0)
            tabs->setCurrentWidget(page);
    }
    field->setFocus(Qt::OtherFocusReason);
    if (auto *line = qobject_cast<QLineEdit *>(field))
        line->selectAll();
    else if (auto *text = qobject_cast<QPlainTextEdit *>(field))
        text->selectAll();
    else if (auto *box = qobject_cast<QComboBox *>(field); box && box->lineEdit())
        box->lineEdit()->selectAll();
}
