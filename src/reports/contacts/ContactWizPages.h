#pragma once

#include "controls/ListModel.h"
#include "reports/contacts/ContactReportSql.h"

#include <QObject>

#include <array>

class ListView;
class QCheckBox;
class QRadioButton;

/// The pages of the contact report wizard. Each is built into the given widget and lives as long as that.

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
    void Changed(); ///< another report was selected
    void Chosen();  ///< the report was double-clicked

private:
    ListModel m_reports;
    ListView *RepList;
    QCheckBox *HTMLopt;
};

/// What the report contains about people, which people, and in which form.
class ContactWizChoicePage final : public QObject
{
    Q_OBJECT

public:
    explicit ContactWizChoicePage(QWidget *page);

    void Enter(bool tabularOnly);
    /// If the opener has no list of selected people, all is the only choice.
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

/// What the report contains about organisations.
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
