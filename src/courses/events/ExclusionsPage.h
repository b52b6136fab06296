#pragma once

#include "controls/ComboModel.h"
#include "controls/ListModel.h"
#include "courses/events/EventSeries.h"
#include "courses/maintenance/ExclusionODBC.h"

#include <QWidget>

class ListView;
class QPushButton;

/// The "Exclusions" tab of a new series: the periods that it leaves out.
class ExclusionsPage final : public QWidget
{
    Q_OBJECT

public:
    explicit ExclusionsPage(QWidget *parent = nullptr);

    /// Offers the periods that end on that day or later.
    void FillPeriods(QDate start);
    std::vector<SeriesPlan::Exclusion> Exclusions() const;

signals:
    void Changed();

private:
    void Add();
    void AddNew();
    void Remove();
    void EnableButtons();

    QDate m_start;
    ComboModel m_choice; ///< the place in m_periods as data
    std::vector<ExclusionPeriod> m_periods;
    ListModel m_chosen;
    ListView *m_list = nullptr;
    QPushButton *m_add = nullptr;
    QPushButton *m_remove = nullptr;
};
