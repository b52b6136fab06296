#pragma once

#include "controls/ListModel.h"
#include "reports/contacts/ContactReportSql.h"

#include <QObject>

#include <array>

class ListView;
class QCheckBox;
class QRadioButton;

/// The pages of the contact report wizard. Each is built into the widget that it is given and lives with it.

/// Which report, and whether its tables have borders.
class ContactWizWelcomePage final : public QObject
{
    Q_OBJECT

public:
    /// The reports by the numbers of their rows.
    enum Report {
        Contacts = 1,
        Staff,
        Characteristics,
        Organisations,
        ByCharacteristic,
        ByGroupType,
        ByGroup
    };

    explicit ContactWizWelcomePage(QWidget *page);

    void Enter();
    Report Selected() const;
    bool TableBorder() const;

signals:
    void Changed(); ///< another report is selected
    void Chosen();  ///< the report was double-clicked

private:
    ListModel m_reports;
    ListView *RepList;
    QCheckBox *HTMLopt;
};

/// What of the people is in the report, who, and in which form.
class ContactWizChoicePage final : public QObject
{
    Q_OBJECT

public:
    explicit ContactWizChoicePage(QWidget *page);

    void Enter(bool tabularOnly);
    /// Without a list of selected people in sight there is no choice but all.
    void OfferSelected(bool offered, bool preferred);
    /// Keeps the ticks for the next time.
    ContactReport Choices();
    bool Tabular() const;

private:
    ListModel m_items;
    ListView *Basic;
    std::array<QRadioButton *, 4> nameOpt{};
    std::array<QRadioButton *, 2> ConOpt{}; ///< all, selected
    std::array<QRadioButton *, 2> LayOpt{}; ///< one item per line, tabular
    bool m_tabularOnly = false;
    int m_chosenLayout = 0; ///< before the layout was forced
};

/// What of the organisations is in the report.
class ContactWizOrgPage final : public QObject
{
    Q_OBJECT

public:
    explicit ContactWizOrgPage(QWidget *page);

    void Enter();
    /// Keeps the ticks for the next time.
    OrgFlags Choices();
    bool Tabular() const;

private:
    ListModel m_items;
    ListView *OrgDetails;
    std::array<QRadioButton *, 2> LayOpt{};
};
