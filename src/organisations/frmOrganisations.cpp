#include "organisations/frmOrganisations.h"

#include "contacts/ContactModule.h"
#include "core/Session.h"
#include "database/Security.h"
#include "forms/DeleteSelected.h"
#include "forms/FormBuilder.h"
#include "organisations/OrganisationModule.h"
#include "organisations/frmAddOrg.h"

namespace
{
constexpr int mayAdd = 2;
constexpr int mayChange = 3;
constexpr int fullAccess = 9;

int Level()
{
    return UserRight(ContactSectionOf(ContactSection::Organisations).right);
}
} // namespace

frmOrganisations::frmOrganisations(QWidget *parent)
    : FormDialog(QStringLiteral("frmOrganisations"), QStringLiteral("Organisations"), parent)
{
    m_organisations.SetColumns({QStringLiteral("Organisations")});
    FormBuilder form(this);
    m_list = form.List(QStringLiteral("MainList"), {}, m_organisations, ListView::Choice::Multi);
    m_list->setAccessibleName(QStringLiteral("Organisations"));
    m_list->SetEmptyText(QStringLiteral("No organisations yet."));
    form.BeginButtons(FormBuilder::Align::Start);
    m_addBtn = form.Button(QStringLiteral("AddBtn"), QStringLiteral("&Add"));
    m_editBtn = form.Button(QStringLiteral("EditBtn"), QStringLiteral("&Edit"));
    m_delBtn = form.Button(QStringLiteral("DelBtn"), QStringLiteral("&Delete"));
    QPushButton *refresh = form.Button(QStringLiteral("RefBtn"), QStringLiteral("&Refresh"));
    form.Gap();
    QPushButton *exit = form.Button(QStringLiteral("ExitBtn"), QStringLiteral("E&xit"));
    form.EndButtons();

    connect(m_addBtn, &QPushButton::clicked, this, &frmOrganisations::AddOrganisation);
    connect(m_editBtn, &QPushButton::clicked, this, &frmOrganisations::EditOrganisations);
    connect(m_delBtn, &QPushButton::clicked, this, &frmOrganisations::DeleteOrganisations);
    connect(refresh, &QPushButton::clicked, this, &frmOrganisations::Refresh);
    connect(exit, &QPushButton::clicked, this, &frmOrganisations::reject);
    connect(m_list, &ListView::Opened, m_editBtn, &QPushButton::click);
    connect(m_list, &ListView::DeletePressed, m_delBtn, &QPushButton::click);
    connect(m_organisations.Selection(), &QItemSelectionModel::selectionChanged, this,
            &frmOrganisations::ApplyRights);
    Refresh();
    resize(fontMetrics().averageCharWidth() * 84, fontMetrics().lineSpacing() * 26);
}

void frmOrganisations::Refresh()
{
    const QStringList chosen = m_organisations.SelectedKeys();
    Contact_FillListView(ContactSection::Organisations, m_organisations);
    const int row = chosen.isEmpty() ? -1 : m_organisations.Find(chosen.first());
    if (row >= 0) {
        m_organisations.SelectOnly(row);
        m_list->ShowRow(row);
    }
    ApplyRights();
}

void frmOrganisations::ApplyRights()
{
    const int level = Level();
    const bool chosen = m_organisations.Selection()->hasSelection();
    m_addBtn->setEnabled(level >= mayAdd);
    m_editBtn->setText(level >= mayChange ? QStringLiteral("&Edit") : QStringLiteral("&View"));
    m_editBtn->setEnabled(chosen);
    m_delBtn->setEnabled(level == fullAccess && chosen);
}

void frmOrganisations::AddOrganisation()
{
    const int added = frmAddOrg::AddRecord(this);
    if (added <= 0)
        return;
    Refresh();
    const int row = m_organisations.Find(u'?' % QString::number(added));
    if (row < 0)
        return;
    m_organisations.SelectOnly(row);
    m_list->ShowRow(row);
}

void frmOrganisations::EditOrganisations()
{
    frmAddOrg::EditRecords(m_organisations.SelectedKeys(), Level() >= mayChange, this);
    Refresh();
}

void frmOrganisations::DeleteOrganisations()
{
    DeleteSelected(m_organisations, [](const ListItem &organisation) {
        return Organisation_Delete(KeyNumber(organisation.key)) ? Deletion::Done : Deletion::Failed;
    });
}
