#include "forms/fields/ModifiedMark.h"

#include "controls/ListModel.h"
#include "controls/TreeModel.h"
#include "forms/fields/FormKeys.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>

#include <algorithm>
#include <utility>

namespace
{
QString ValueOf(const QWidget *field)
{
    if (auto *text = qobject_cast<const QLineEdit *>(field))
        return text->text();
    if (auto *notes = qobject_cast<const QPlainTextEdit *>(field))
        return notes->toPlainText();
    if (auto *combo = qobject_cast<const QComboBox *>(field))
        return combo->currentText();
    auto *button = qobject_cast<const QAbstractButton *>(field);
    return button && button->isChecked() ? QStringLiteral("1") : QString();
}
} // namespace

ModifiedMark::ModifiedMark(QAbstractButton *saveButton, QObject *parent)
    : QObject(parent)
    , m_saveButton(saveButton)
{
    if (!m_saveButton)
        return;
    if (auto *form = qobject_cast<QWidget *>(parent))
        FormKeys::Bind(form, QKeySequence::Save, m_saveButton, QStringLiteral("Save"));
    connect(m_saveButton, &QObject::destroyed, &m_timer, &QTimer::stop);
    connect(&m_timer, &QTimer::timeout, this, &ModifiedMark::Paint);
    m_timer.start(250);
}

void ModifiedMark::Watch(QWidget *root)
{
    const auto belongs = [this, root](QWidget *field) {
        for (QWidget *at = field; at && at != root->parentWidget(); at = at->parentWidget()) {
            if (m_ignored.contains(at))
                return false;
        }
        return true;
    };
    for (QWidget *field : root->findChildren<QWidget *>()) {
        if (!belongs(field))
            continue;
        if (auto *text = qobject_cast<QLineEdit *>(field))
            connect(text, &QLineEdit::textChanged, this, &ModifiedMark::OnField);
        else if (auto *notes = qobject_cast<QPlainTextEdit *>(field))
            connect(notes, &QPlainTextEdit::textChanged, this, &ModifiedMark::OnField);
        else if (auto *combo = qobject_cast<QComboBox *>(field))
            connect(combo, &QComboBox::currentIndexChanged, this, &ModifiedMark::OnField);
        else if (auto *button = qobject_cast<QAbstractButton *>(field))
            connect(button, &QAbstractButton::toggled, this, &ModifiedMark::OnField);
        else
            continue;
        m_fields.push_back({field, ValueOf(field)});
    }
}

void ModifiedMark::Watch(ListModel &list)
{
    connect(&list, &ListModel::Changed, this, &ModifiedMark::Set);
}

void ModifiedMark::Watch(TreeModel &tree)
{
    connect(&tree, &TreeModel::Changed, this, &ModifiedMark::Set);
}

void ModifiedMark::Ignore(QWidget *field)
{
    m_ignored.insert(field);
}

void ModifiedMark::Set()
{
    m_set = m_setByOthers = m_stale = true;
}

void ModifiedMark::OnField()
{
    m_set = m_stale = true;
}

void ModifiedMark::Clear()
{
    m_set = m_setByOthers = false;
    m_stale = true;
    for (Field &field : m_fields) {
        if (field.widget)
            field.before = ValueOf(field.widget);
    }
}

bool ModifiedMark::Differs() const
{
    return m_setByOthers || std::any_of(m_fields.begin(), m_fields.end(), [](const Field &field) {
               return field.widget && ValueOf(field.widget) != field.before;
           });
}

void ModifiedMark::Saved()
{
    Clear();
    TellSaved();
}

void ModifiedMark::TellSaved()
{
    if (WhenSaved())
        WhenSaved()();
}

std::function<void()> &ModifiedMark::WhenSaved()
{
    static std::function<void()> whenSaved;
    return whenSaved;
}

bool ModifiedMark::AskToSave(const std::function<void()> &save, Dialogs::Answer defaultAnswer)
{
    if (!m_set)
        return true;
    const Dialogs::Answer answer = Dialogs::MsgBox(
        QStringLiteral("Some of the data has changed.\nOkay to update before exiting?"),
        QStringLiteral("Warning"), Dialogs::Buttons::YesNoCancel, Dialogs::Icon::Question, defaultAnswer);
    if (answer == Dialogs::Answer::No)
        return true;
    if (answer != Dialogs::Answer::Yes)
        return false;
    save();
    return !m_set;
}

void ModifiedMark::Paint()
{
    const bool isStale = std::exchange(m_stale, false);
    const bool differs = isStale ? m_set && Differs() : m_painted;
    if (m_painted == differs)
        return;
    m_painted = differs;
    if (!m_painted) {
        m_saveButton->setPalette(QPalette());
        return;
    }
    QPalette palette = m_saveButton->palette();
    const QColor highlight = palette.color(QPalette::Highlight);
    palette.setColor(QPalette::Button, highlight);
    // Styles draw a button lighter than its colour, so the text colour for selections may be too faint.
    palette.setColor(QPalette::ButtonText, qGray(highlight.lighter(120).rgb()) < 128 ? Qt::white : Qt::black);
    m_saveButton->setPalette(palette);
}
