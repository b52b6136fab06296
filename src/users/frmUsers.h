#pragma once

#include "controls/ListModel.h"

#include <QWidget>

class FormBuilder;
class ListView;
class QPushButton;

/// The users of the database: a child window of the main window.
class frmUsers final : public QWidget
{
    Q_OBJECT

public:
    explicit frmUsers(QWidget *parent = nullptr);

public slots:
    /// Lists the users again, and applies the rights of the user who is logged on now.
    void Form_Refresh();

private:
    void Build();
    void BuildButtons(FormBuilder &form);
    void Connect();
    void ApplyRights();
    void AddUser();
    void EditRights();
    void SetPassword();
    void DeleteUsers();

    ListModel m_users;
    ListView *m_list;
    QPushButton *m_add;
    QPushButton *m_edit;
    QPushButton *m_setPassword;
    QPushButton *m_delete;
    QPushButton *m_refresh;
    QPushButton *m_exit;
};
