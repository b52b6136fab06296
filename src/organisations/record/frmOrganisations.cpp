#include "organisations/record/frmOrganisations.h"

#include "contacts/lists/VocabularyModule.h"
#include "core/session/Session.h"
#include "database/statements/Security.h"
#include "forms/frames/FormBuilder.h"
#include "forms/lists/DeleteSelected.h"
#include "organisations/record/OrganisationModule.h"
#include "organisations/record/frmAddOrg.h"

namespace
{
Level UserLevel()
{
    return UserRight(Right::Organisations);
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
    m_buttons.emplace(form, m_list);

    connect(m_buttons->add, &QPushButton::clicked, this, &frmOrganisations::AddOrganisation);
    connect(m_buttons->edit, &QPushButton::clicked, this, &frmOrganisations::EditOrganisations);
    connect(m_buttons->del, &QPushButton::clicked, this, &frmOrganisations::DeleteOrganisations);
    connect(m_buttons->refresh, &QPushButton::clicked, this, &frmOrganisations::Refresh);
    connect(m_buttons->exit, &QPushButton::clicked, this, &frmOrganisations::reject);
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
    m_buttons->Apply(UserLevel(), m_organisations.Selection()->hasSelection());
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
    frmAddOrg::EditRecords(m_organisations.SelectedKeys(), UserLevel() >= Level::Edit, this);
    Refresh();
}

void frmOrganisations::DeleteOrganisations()
{
    const auto erase = [](const ListItem &organisation) {
        return Organisation_Delete(OrganRef(KeyNumber(organisation.key))) ? Deletion::Done : Deletion::Failed;
    };
    DeleteSelected(m_organisations, erase, QStringLiteral("item"), [](const ListItem &organisation) {
        return Organisation_PeopleText(OrganRef(KeyNumber(organisation.key)));
    });
}
