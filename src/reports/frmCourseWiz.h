#pragma once

#include "controls/ListModel.h"
#include "forms/FormDialog.h"

class ListView;
class Progress;
class ProgressBar;
class QCheckBox;
class QDateEdit;
class QLabel;
class SSWizardNavBar;
class WizardPages;

/// The report wizard of the Course Manager: picks a report and its period, writes it and opens it.
class frmCourseWiz final : public FormDialog
{
    Q_OBJECT

public:
    explicit frmCourseWiz(QWidget *parent = nullptr);

protected:
    bool MayLeave() override;

private:
    void BuildWelcome(QWidget *page);
    void BuildDates(QWidget *page);
    void BuildProgress(QWidget *page);
    void OnPageShown(int page);
    void OnNavigation(int code);
    void Finish();
    void RememberChoices() const;

    ListModel m_reports;
    WizardPages *m_pages;
    SSWizardNavBar *m_navigation = nullptr;
    ListView *m_reportList = nullptr;
    QCheckBox *m_tableBorder = nullptr;
    QDateEdit *m_dateFrom = nullptr;
    QDateEdit *m_dateTo = nullptr;
    QCheckBox *m_noDates = nullptr;
    QLabel *m_notice = nullptr;
    ProgressBar *m_progress = nullptr;
    QList<int> m_courseSubset;
    Progress *m_run = nullptr; ///< of the report that is being written
};
