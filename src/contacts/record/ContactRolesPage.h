#pragma once

#include "controls/ComboModel.h"
#include "controls/ListModel.h"
#include "database/values/Keys.h"

#include <QWidget>

class DateField;
class ListView;
class MoneyField;
class QComboBox;
class QPushButton;

/// The "Roles" tab of a person: what the person can be engaged as, at what rate and for how long. Nothing is
/// written before the person is saved.
class ContactRolesPage final : public QWidget
{
    Q_OBJECT

public:
    explicit ContactRolesPage(QWidget *parent = nullptr);

    void FillLists();
    /// Whose roles are shown; 0 for a new person.
    void SetContact(ContactRef contactRef) { m_contactRef = contactRef; }
    /// Resets the fields of one role; the list of them stays.
    void ClearFields();
    void SetLocked(bool locked);

    ListModel &RolesInfo() { return m_roles; }

private:
    void ShowType();
    void ShowSelected();
    void AddRole();
    void DeleteRoles();
    void EnableButtons();

    ComboModel m_types;
    ListModel m_roles;
    ContactRef m_contactRef;
    bool m_locked = false;

    QComboBox *m_roleList;
    MoneyField *m_rate;
    DateField *m_start;
    DateField *m_end;
    QPushButton *m_addBtn;
    QPushButton *m_deleteBtn;
    ListView *m_list;
};
