#pragma once

#include <QObject>

#include <functional>

class ListView;
class QAbstractButton;

/// A pair of lists with its Add, Remove and Clear buttons. Rows and their keys are moved with the buttons,
/// with a double click or Enter on a row, by dragging, and with Delete in the used list. Buttons that would
/// do nothing are disabled.
class UsedAvailable final : public QObject
{
    Q_OBJECT

public:
    /// What the buttons do. One that is left empty moves rows between the two lists.
    struct Actions {
        std::function<void()> add{};
        std::function<void()> remove{};
        std::function<void()> clear{};
    };

    /// `clear` may be null.
    UsedAvailable(ListView *available, ListView *used, QAbstractButton *add, QAbstractButton *remove,
                  QAbstractButton *clear, QObject *parent = nullptr);

    void SetActions(Actions actions);
    /// Which of the three actions the user's rights allow; a locked pair still shows its lists.
    void Allow(bool add, bool remove, bool clear);
    void Allow(bool all) { Allow(all, all, all); }

    void Add();    ///< the selected available rows become used
    void Remove(); ///< the selected used rows become available again
    void Clear();  ///< all of them do
    /// All rows become available, whatever the user's rights allow: for another record.
    void Empty();

signals:
    void Moved(); ///< the user moved rows

private:
    void EnableButtons();
    void MoveBack(const std::vector<int> &rows);

    ListView *m_available;
    ListView *m_used;
    QAbstractButton *m_add;
    QAbstractButton *m_remove;
    QAbstractButton *m_clear;
    Actions m_actions;
    bool m_mayAdd = true;
    bool m_mayRemove = true;
    bool m_mayClear = true;
};
