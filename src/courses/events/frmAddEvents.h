#pragma once

#include "controls/ListModel.h"
#include "controls/TreeModel.h"
#include "courses/events/SeriesPreview.h"
#include "forms/frames/FormDialog.h"

class ExclusionsPage;
class ListView;
class PatternPage;
class QLabel;
class QPushButton;
class QTabWidget;
class QTimer;

/// Makes a series of events for a course, after showing their dates. gDialogResult is 1 when it was run.
class frmAddEvents final : public FormDialog
{
    Q_OBJECT

public:
    /// `hasEvents` tells whether the course has events already, which the user may keep.
    frmAddEvents(CourseRef courseRef, bool hasEvents, QWidget *parent = nullptr);
    ~frmAddEvents() override;

private:
    void Build();
    void Connect();
    SeriesPlan Plan() const;
    void ShowPreview();
    bool IsStartKnown();
    /// Deletes the course's events if the user agrees. False if nothing is to be made.
    bool ClearEvents();
    void CreateEvents();
    void TellUnbooked(const SeriesMade &made);

    CourseRef m_courseRef;
    bool m_hasEvents;
    TreeModel m_resources;
    ListModel m_dates;
    QTimer *m_later;
    QTabWidget *m_tabs = nullptr;
    PatternPage *m_pattern = nullptr;
    ExclusionsPage *m_exclusions = nullptr;
    QLabel *m_summary = nullptr;
    QPushButton *m_create = nullptr;
};
