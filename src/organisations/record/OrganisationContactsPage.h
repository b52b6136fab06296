#pragma once

#include "controls/ListModel.h"

#include <QWidget>

class ListView;
class QLineEdit;
class QPushButton;

/// The "Contacts" tab of an organisation: who belongs to it. The list is stored with the organisation, the
/// positions at once.
class OrganisationContactsPage final : public QWidget
{
    Q_OBJECT

public:
    explicit OrganisationContactsPage(QWidget *parent = nullptr);

    void SetLocked(bool locked);
    ListModel &ContactInfo() { return m_contacts; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void EnableButtons();
    void AddContacts();
    void RemoveContacts();
    void ViewContacts();
    void UpdateJobTitle();

    ListModel m_contacts;
    bool m_locked = false;
    QPushButton *m_addBtn;
    QPushButton *m_deleteBtn;
    QPushButton *m_viewBtn;
    QLineEdit *m_jobTitle;
    QPushButton *m_updateBtn;
};
