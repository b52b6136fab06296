#include "forms/frames/RecordNavigator.h"

#include "forms/fields/ModifiedMark.h"
#include "platform/desktop/Dialogs.h"

#include <QAbstractButton>

RecordNavigator::RecordNavigator(QAbstractButton *prev, QAbstractButton *next, ModifiedMark &modified,
                                 std::function<void()> save, std::function<void(const QString &)> show,
                                 QObject *parent)
    : QObject(parent)
    , m_prev(prev)
    , m_next(next)
    , m_modified(modified)
    , m_save(std::move(save))
    , m_show(std::move(show))
{
    connect(m_prev, &QAbstractButton::clicked, this, &RecordNavigator::Prev);
    connect(m_next, &QAbstractButton::clicked, this, &RecordNavigator::Next);
    EnableButtons();
}

void RecordNavigator::SetKeys(const QStringList &keys, int index)
{
    m_keys = keys;
    m_index = qBound(0, index, qMax(0, Count() - 1));
    EnableButtons();
}

QString RecordNavigator::Position() const
{
    if (m_keys.isEmpty())
        return {};
    return u" (RECORD " % QString::number(m_index + 1) % u" OF " % QString::number(Count()) % u')';
}

void RecordNavigator::Go(int step)
{
    const int target = m_index + step;
    if (target < 0 || target >= Count())
        return;
    if (m_modified.IsSet()) {
        const Dialogs::Answer answer =
            Dialogs::MsgBox(QStringLiteral("Okay to update record?"), QStringLiteral("Record Changed"),
                            Dialogs::Buttons::YesNo, Dialogs::Icon::Question);
        if (answer == Dialogs::Answer::Yes) {
            m_save();
            // A save may turn it into a new record, which is on no list.
            if (m_keys.isEmpty())
                return;
        }
        m_modified.Clear();
    }
    m_index = target;
    EnableButtons();
    m_show(Key());
}

void RecordNavigator::EnableButtons()
{
    m_prev->setEnabled(m_index > 0);
    m_next->setEnabled(m_index + 1 < Count());
}
