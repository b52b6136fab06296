#include "forms/fields/RequiredMarks.h"

#include "forms/fields/CaptionLabel.h"
#include "forms/fields/FieldFocus.h"
#include "platform/desktop/Dialogs.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>

#include <algorithm>

void RequiredMarks::Add(CaptionLabel *label, QLineEdit *field)
{
    const auto mark = [this, label, field] {
        const bool secret = field->echoMode() != QLineEdit::Normal;
        Mark(label, secret ? field->text().isEmpty() : field->text().trimmed().isEmpty());
    };
    connect(field, &QLineEdit::textChanged, this, mark);
    mark();
}

void RequiredMarks::Add(CaptionLabel *label, QPlainTextEdit *field)
{
    const auto mark = [this, label, field] { Mark(label, field->toPlainText().trimmed().isEmpty()); };
    connect(field, &QPlainTextEdit::textChanged, this, mark);
    mark();
}

void RequiredMarks::Add(CaptionLabel *label, QComboBox *field)
{
    const auto mark = [this, label, field] { Mark(label, field->currentText().trimmed().isEmpty()); };
    connect(field, &QComboBox::currentTextChanged, this, mark);
    mark();
}

void RequiredMarks::Mark(CaptionLabel *label, bool missing)
{
    if (std::find(m_labels.begin(), m_labels.end(), label) == m_labels.end())
        m_labels.push_back(label);
    label->SetMissing(missing);
}

QString RequiredMarks::MissingList() const
{
    QString list;
    for (const CaptionLabel *label : m_labels) {
        if (!label->IsMissing())
            continue;
        list += u"    " % label->Name() % u'\n';
    }
    return list;
}

bool RequiredMarks::Complete() const
{
    const QString list = MissingList();
    if (list.isEmpty())
        return true;
    Dialogs::MsgBox(u"The followings fields must be completed:\n" % list,
                    QStringLiteral("Form not complete"));
    const auto missing = std::find_if(m_labels.begin(), m_labels.end(),
                                      [](const CaptionLabel *label) { return label->IsMissing(); });
    if (missing != m_labels.end() && (*missing)->buddy())
        FocusField((*missing)->buddy());
    return false;
}

void RequiredMarks::FocusFirst() const
{
    if (!m_labels.empty() && m_labels.front()->buddy())
        FocusField(m_labels.front()->buddy());
}
