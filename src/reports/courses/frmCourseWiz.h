#pragma once

#include "controls/ListModel.h"
#include "reports/wizard/WizardForm.h"

class DateField;
class ListView;
class QCheckBox;
class ReportEnd;

/// The report wizard of the Course Manager: the user picks a report and its period; it is written, opened,
/// and saved as PDF on request.
class frmCourseWiz final : public WizardForm
{
    Q_OBJECT

public:
    explicit frmCourseWiz(QWidget *parent = nullptr);

protected:
    Offer Offered(int page) const override;
    void Enter(int page) override;
    void OnNext() override;
    void OnFinish() override;

private:
    void BuildWelcome(QWidget *page);
    void BuildDates(QWidget *page);
    void RememberChoices() const;

    ListModel m_reports;
    ListView *m_reportList = nullptr;
    QCheckBox *m_tableBorder = nullptr;
    DateField *m_dateFrom = nullptr;
    DateField *m_dateTo = nullptr;
    QCheckBox *m_noDates = nullptr;
    ReportEnd *m_end = nullptr;
    QList<int> m_courseSubset;
};
