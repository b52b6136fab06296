#include "forms/fields/UsedAvailable.h"

#include "controls/ListModel.h"
#include "forms/fields/FieldLock.h"
#include "forms/lists/ListView.h"

#include <QAbstractButton>

#include <numeric>

UsedAvailable::UsedAvailable(ListView *available, ListView *used, QAbstractButton *add,
                             QAbstractButton *remove, QAbstractButton *clear, QObject *parent)
    : QObject(parent ? parent : used)
    , m_available(available)
    , m_used(used)
    , m_add(add)
    , m_remove(remove)
    , m_clear(clear)
{
    connect(m_add, &QAbstractButton::clicked, this, &UsedAvailable::Add);
    connect(m_remove, &QAbstractButton::clicked, this, &UsedAvailable::Remove);
    if (m_clear)
        connect(m_clear, &QAbstractButton::clicked, this, &UsedAvailable::Clear);
    connect(m_available, &ListView::Opened, this, &UsedAvailable::Add);
    connect(m_used, &ListView::Opened, this, &UsedAvailable::Remove);
    connect(m_used, &ListView::DeletePressed, this, &UsedAvailable::Remove);
    m_used->TakeDropsFrom(*m_available, [this] { Add(); });
    m_available->TakeDropsFrom(*m_used, [this] { Remove(); });
    for (ListView *list : {m_available, m_used}) {
        connect(&list->Model(), &ListModel::Changed, this, &UsedAvailable::EnableButtons);
        connect(list->Model().Selection(), &QItemSelectionModel::selectionChanged, this,
                &UsedAvailable::EnableButtons);
    }
    EnableButtons();
}

void UsedAvailable::SetActions(Actions actions)
{
    m_actions = std::move(actions);
}

void UsedAvailable::Allow(bool add, bool remove, bool clear)
{
    m_mayAdd = add;
    m_mayRemove = remove;
    m_mayClear = clear;
    EnableButtons();
}

void UsedAvailable::Add()
{
    if (!m_mayAdd)
        return;
    if (m_actions.add)
        m_actions.add();
    else
        m_used->Model().AddAll(m_available->Model().Take(m_available->Model().SelectedRows()));
    emit Moved();
}

void UsedAvailable::Remove()
{
    if (!m_mayRemove)
        return;
    if (m_actions.remove)
        m_actions.remove();
    else
        MoveBack(m_used->Model().SelectedRows());
    emit Moved();
}

void UsedAvailable::Clear()
{
    if (!m_mayClear)
        return;
    if (m_actions.clear)
        m_actions.clear();
    else
        Empty();
    emit Moved();
}

void UsedAvailable::Empty()
{
    std::vector<int> all(static_cast<size_t>(m_used->Model().Count()));
    std::iota(all.begin(), all.end(), 0);
    MoveBack(all);
}

void UsedAvailable::MoveBack(const std::vector<int> &rows)
{
    if (rows.empty())
        return;
    ListModel &available = m_available->Model();
    available.AddAll(m_used->Model().Take(rows));
    available.sort(0, Qt::AscendingOrder);
}

void UsedAvailable::EnableButtons()
{
    EnableButton(m_add, m_mayAdd && m_available->Model().Selection()->hasSelection(), m_available);
    EnableButton(m_remove, m_mayRemove && m_used->Model().Selection()->hasSelection(), m_used);
    if (m_clear)
        EnableButton(m_clear, m_mayClear && !m_used->Model().IsEmpty(), m_used);
}
