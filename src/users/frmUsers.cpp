#include "users/frmUsers.h"

#include "core/session/Session.h"
#include "database/statements/Security.h"
#include "database/values/GlobalCode.h"
#include "forms/fields/FormKeys.h"
#include "forms/frames/FormBuilder.h"
#include "forms/frames/FormSize.h"
#include "forms/lists/DeleteSelected.h"
#include "users/UsersModule.h"
#include "users/frmAddEditUser.h"
#include "users/frmUsersPassword.h"

#include <QMdiSubWindow>

frmUsers::frmUsers(QWidget *parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("frmUsers"));
    setWindowTitle(QStringLiteral("Users"));
    FormSize::Remember(this);
    m_users.SetColumns({QStringLiteral("Users")});
    Build();
    Connect();
    Form_Refresh();
}

void frmUsers::Build()
{
    FormBuilder form(this);
    m_list = form.List(QStringLiteral("MainList"), {}, m_users, ListView::Choice::Multi);
    m_list->setAccessibleName(QStringLiteral("Users"));
    m_list->SetEmptyText(
        QStringLiteral("No users yet: everybody can work with the database, with all rights."));
    BuildButtons(form);
    resize(fontMetrics().averageCharWidth() * 84, fontMetrics().lineSpacing() * 24);
}

void frmUsers::BuildButtons(FormBuilder &form)
{
    form.BeginButtons(FormBuilder::Align::Start);
    m_add = form.Button(QStringLiteral("AddBtn"), QStringLiteral("&New User"));
    m_edit = form.Button(QStringLiteral("EditBtn"), QStringLiteral("&Security Rights"));
    m_setPassword = form.Button(QStringLiteral("SetPassBtn"), QStringLiteral("&Password"));
    m_delete = form.Button(QStringLiteral("DelBtn"), QStringLiteral("&Delete User"));
    form.Gap();
    m_refresh = form.Button(QStringLiteral("RefBtn"), QStringLiteral("&Refresh"));
    m_exit = form.Button(QStringLiteral("ExitBtn"), QStringLiteral("E&xit"));
    form.EndButtons();
}

void frmUsers::Connect()
{
    connect(m_add, &QPushButton::clicked, this, &frmUsers::AddUser);
    connect(m_edit, &QPushButton::clicked, this, &frmUsers::EditRights);
    // Alt+S is the letter of the Security menu too.
    FormKeys::Bind(this, Qt::Key_F4, m_edit);
    connect(m_setPassword, &QPushButton::clicked, this, &frmUsers::SetPassword);
    connect(m_delete, &QPushButton::clicked, this, &frmUsers::DeleteUsers);
    connect(m_refresh, &QPushButton::clicked, this, &frmUsers::Form_Refresh);
    connect(m_exit, &QPushButton::clicked, this, [this] {
        auto *frame = qobject_cast<QMdiSubWindow *>(parentWidget());
        frame ? frame->close() : close();
    });
    connect(m_list, &ListView::Opened, m_edit, &QPushButton::click);
    connect(m_list, &ListView::DeletePressed, m_delete, &QPushButton::click);
}

void frmUsers::ApplyRights()
{
    const Level users = UserRight(Right::Users);
    // Users who may change rights but not delete cannot add either: Level::Edit is left out on purpose.
    m_add->setEnabled(users == Level::Add || users == Level::Full);
    m_delete->setEnabled(users == Level::Full);
    m_setPassword->setEnabled(UserMay(Right::UserPasswords, Level::Full));
}

void frmUsers::Form_Refresh()
{
    ApplyRights();
    Users_FillList(m_users);
    m_users.SelectFirst();
}

void frmUsers::AddUser()
{
    frmAddEditUser form(this);
    const int added = form.Run();
    if (added == 0)
        return;
    const int row = m_users.Add({u'!' % SqlNumber(added), form.AddedName()});
    if (row == 0)
        m_users.SelectFirst();
}

void frmUsers::EditRights()
{
    std::vector<ListItem> users;
    for (const int row : m_users.SelectedRows())
        users.push_back(m_users.At(row));
    if (users.empty())
        return;
    const bool readOnly = !UserMay(Right::Users, Level::Edit);
    frmAddEditUser(std::move(users), readOnly, this).Run();
}

void frmUsers::SetPassword()
{
    const std::vector<int> selected = m_users.SelectedRows();
    if (!selected.empty())
        frmUsersPassword(m_users.At(selected.front()), this).Run();
}

void frmUsers::DeleteUsers()
{
    for (const QString &key : m_users.SelectedKeys()) {
        const int row = m_users.Find(key);
        if (!MayDelete(u"user '" % m_users.At(row).text % u'\'')) {
            m_users.Select(row, false);
            continue;
        }
        if (!Users_MayChange(KeyNumber(key), std::nullopt) || !Users_Delete(KeyNumber(key)))
            break;
        m_users.RemoveKey(key);
    }
    m_users.SelectFirst();
}
