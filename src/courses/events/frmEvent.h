#pragma once

#include "controls/ComboModel.h"
#include "courses/booking/HolderColumns.h"
#include "courses/events/EventFile.h"
#include "forms/frames/FormBuilder.h"
#include "forms/frames/FormDialog.h"

#include <vector>

class AttendancePage;
class QLabel;
class QTimer;

/// One event of a course: when it takes place, who came, and what is booked on it. It writes straight to the
/// database.
class frmEvent final : public FormDialog
{
    Q_OBJECT

public:
    enum class Tab { Event, Attendance, Staff, Facilities, Venues };

    /// Opens on the event in that place of the course.
    frmEvent(CourseRef courseRef, int eventNo, Tab tab = Tab::Event, QWidget *parent = nullptr);

protected:
    bool MayLeave() override;

private:
    void BuildEvent();
    void BuildStaff();
    void BuildPair(const QString &tab, const FormBuilder::PairNames &names, ListModel &available,
                   ListModel &used);
    void Watch(const FormBuilder::Pair &pair, ListModel &available);
    void BuildButtons(FormBuilder &form);
    void Connect();

    void ShowEvent(int eventNo);
    void ShowFields();
    void ShowPosition();
    void ShowHolders();
    void ChooseRole();
    void ApplyRights();
    EventHours Hours() const;
    bool Save();
    bool SettledChanges();
    void Go(int step);
    void PickOthers();
    void OpenPayments(int row);

    CourseRef m_courseRef;
    QString m_title; ///< of the course
    int m_eventNo = 0;
    int m_count = 0; ///< of the course's events
    bool m_isGone = false;
    EventFile m_file;
    ComboModel m_roles;
    HolderColumns m_holders;
    QTimer *m_holderTimer = nullptr;

    QTabWidget *m_tabs = nullptr;
    DateField *m_date = nullptr;
    TimeField *m_from = nullptr;
    TimeField *m_to = nullptr;
    QPlainTextEdit *m_description = nullptr;
    QLabel *m_position = nullptr;
    AttendancePage *m_attendance = nullptr;
    ComboBox *m_role = nullptr;
    CaptionLabel *m_employed = nullptr;
    std::vector<UsedAvailable *> m_moves;
    QPushButton *m_prev = nullptr;
    QPushButton *m_next = nullptr;
    QPushButton *m_update = nullptr;
    ModifiedMark *m_modified = nullptr;
};
