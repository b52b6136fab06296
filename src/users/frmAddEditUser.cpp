#include "users/frmAddEditUser.h"

#include "core/session/Session.h"
#include "forms/fields/FieldFocus.h"
#include "forms/frames/FormBuilder.h"
#include "forms/frames/OkCancel.h"
#include "forms/frames/OtherScreens.h"
#include "platform/desktop/Directories.h"
#include "users/RightsMenu.h"
#include "users/UsersModule.h"

#include <algorithm>

frmAddEditUser::frmAddEditUser(QWidget *parent)
    : frmAddEditUser({}, false, parent)
{
}

frmAddEditUser::frmAddEditUser(std::vector<ListItem> users, bool readOnly, QWidget *parent)
    : FormDialog(QStringLiteral("frmAddEditUser"), QStringLiteral("User Settings"), parent)
    , m_readOnly(readOnly)
{
    gDialogResult = 0;
    m_users.Fill(std::move(users));
    Users_Fill(m_others);
    Build();
    if (!IsNew())
        LoadFirstUser();
    FillRightsTree(
        m_tree,
        ReadSecurityMap(Directories::SystemFile(QStringLiteral("secmap.dat")), QStringLiteral("english")),
        m_rights);
    Connect();
    if (m_readOnly)
        Lock();
    m_modified->Clear();
}

void frmAddEditUser::Build()
{
    FormBuilder form(this);
    if (IsNew()) {
        BuildUserFields(form);
    } else {
        BuildUserList(form);
    }
    BuildRights(form);
    m_save = OkCancel::Add(form, this,
                           {.ok = QStringLiteral("AddBtn"),
                            .cancel = QStringLiteral("ExitBtn"),
                            .okCaption = IsNew() ? QStringLiteral("&Add") : QStringLiteral("&Update")})
                 .ok;
    m_modified = new ModifiedMark(m_save, this);
    // The rights are what the form is about, so it starts with space for more of them than a list usually
    // has.
    resize(fontMetrics().averageCharWidth() * 72, fontMetrics().lineSpacing() * 38);
}

void frmAddEditUser::BuildUserFields(FormBuilder &form)
{
    form.BeginGroup({}, QStringLiteral("UserFrame"));
    m_name = form.Text(QStringLiteral("UserName"), QStringLiteral("User:"), 255);
    m_required.Add(form.Label(), m_name);
    m_password = form.Password(QStringLiteral("NewPass1"), QStringLiteral("Password:"));
    m_required.Add(form.Label(), m_password);
    m_confirm = form.Password(QStringLiteral("NewPass2"), QStringLiteral("Confirm Password:"));
    form.EndGroup();
}

void frmAddEditUser::BuildUserList(FormBuilder &form)
{
    form.BeginGroup({}, QStringLiteral("EditFrame"));
    QLabel *caption = form.Line(QStringLiteral("EditList_Label"),
                                QStringLiteral("Setting security for the following users:"));
    // Only a few rows, so that the rights get the space.
    auto *list = new ListView(m_users);
    list->setMaximumHeight(fontMetrics().lineSpacing() * 6);
    form.Place(list, QStringLiteral("EditList"));
    caption->setBuddy(list);
    form.EndGroup();
}

void frmAddEditUser::BuildRights(FormBuilder &form)
{
    m_copyFrom = form.Check(QStringLiteral("CopyFromChk"), QStringLiteral("&Use security based on user:"));
    form.Beside();
    m_copyList = form.Combo(QStringLiteral("UserList"), {}, m_others);
    m_copyList->setAccessibleName(QStringLiteral("User whose security is used"));
    m_administrator =
        form.Check(QStringLiteral("AdminChk"), QStringLiteral("&Full Access Rights (System Administrator)"));
    TreeView *tree = form.Tree(QStringLiteral("SecurityList"), QStringLiteral("&Rights:"), m_tree);
    m_menu = new RightsMenu(tree, m_rights, this);
    form.BeginButtons(FormBuilder::Align::Start);
    m_lookOnly = form.Button(QStringLiteral("LookOnlyBtn"), QStringLiteral("&Look Only"));
    m_everything = form.Button(QStringLiteral("EverythingBtn"), QStringLiteral("&Everything"));
    QPushButton *open = form.Button(QStringLiteral("MayBtn"), QStringLiteral("&What This User May Do..."));
    form.EndButtons();
    connect(m_lookOnly, &QPushButton::clicked, this, [this] { Preset(RightLevel::view); });
    connect(m_everything, &QPushButton::clicked, this, [this] { Preset(RightLevel::full); });
    connect(open, &QPushButton::clicked, this, &frmAddEditUser::ShowWhatIsOpen);
}

void frmAddEditUser::LoadFirstUser()
{
    m_rights.Load(Users_GetSecurityRights(KeyNumber(m_users.At(0).key)));
    m_administrator->setChecked(m_rights.IsFull());
    m_rights.SetAdministrator(m_administrator->isChecked());
}

void frmAddEditUser::Connect()
{
    m_copyFrom->setVisible(m_others.Count() > 0);
    m_copyList->setVisible(m_others.Count() > 0);
    m_copyList->setEnabled(false);

    m_modified->Watch(this);
    connect(m_menu, &RightsMenu::RightChanged, m_modified, &ModifiedMark::Set);
    connect(m_administrator, &QCheckBox::toggled, this, &frmAddEditUser::OnAdministrator);
    connect(m_copyFrom, &QCheckBox::toggled, this, &frmAddEditUser::OnCopyFrom);
    connect(&m_others, &ComboModel::CurrentChanged, this, &frmAddEditUser::CopyFromChosen);
    connect(m_save, &QPushButton::clicked, this, &frmAddEditUser::Save);
}

void frmAddEditUser::Lock()
{
    m_menu->SetReadOnly(true);
    m_administrator->setEnabled(false);
    m_copyFrom->setEnabled(false);
    m_lookOnly->setEnabled(false);
    m_everything->setEnabled(false);
    m_save->setEnabled(false);
}

bool frmAddEditUser::MayLeave()
{
    return m_modified->AskToSave([this] { Save(); });
}

void frmAddEditUser::Save()
{
    if (!(IsNew() ? AddUser() : UpdateUsers()))
        return;
    m_modified->Saved();
    accept();
}

bool frmAddEditUser::AddUser()
{
    if (!m_required.Complete())
        return false;
    if (!Users_PasswordsMatch(m_password->text(), m_confirm->text())) {
        FocusField(m_password);
        return false;
    }
    if (!Users_MayChange(0, m_rights.Text()))
        return false;
    gDialogResult = std::max(0, Users_Add(m_name->text(), m_password->text(), m_rights.Text()));
    m_addedName = m_name->text();
    if (gDialogResult < 1)
        FocusField(m_name);
    return gDialogResult > 0;
}

bool frmAddEditUser::UpdateUsers()
{
    for (int row = 0; row < m_users.Count(); ++row) {
        const int id = KeyNumber(m_users.At(row).key);
        if (!Users_MayChange(id, m_rights.Text()) || !Users_UpdateSecurity(id, m_rights.Text()))
            return false;
    }
    gDialogResult = 1;
    return true;
}

void frmAddEditUser::OnAdministrator(bool on)
{
    if (on)
        m_copyFrom->setChecked(false);
    m_rights.SetAdministrator(on);
    ShowRights();
}

void frmAddEditUser::OnCopyFrom(bool on)
{
    m_copyList->setEnabled(on);
    if (!on)
        return;
    m_administrator->setChecked(false);
    CopyFromChosen();
}

void frmAddEditUser::CopyFromChosen()
{
    if (!m_copyFrom->isChecked() || m_others.Current() < 0)
        return;
    m_rights.Load(Users_GetSecurityRights(m_others.CurrentData()));
    ShowRights();
}

void frmAddEditUser::ShowRights()
{
    RefreshRightTexts(m_tree, m_rights);
}

void frmAddEditUser::Preset(QChar level)
{
    m_administrator->setChecked(false);
    m_copyFrom->setChecked(false);
    m_menu->GrantAll(level);
}

void frmAddEditUser::ShowWhatIsOpen()
{
    OtherScreens::Installed().whatUserMayDo(IsNew() ? m_name->text() : m_users.At(0).text, m_rights.Text(),
                                            this);
}
