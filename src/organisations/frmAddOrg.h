#pragma once

#include "forms/FormDialog.h"
#include "organisations/OrganisationRecordODBC.h"

class FormBuilder;
class NotesPage;
class OrganisationContactsPage;
class OrganisationDetailsPage;
class OrganisationPlacesPage;
class QLabel;
class QPushButton;
class QTabWidget;
class RecordNavigator;

/// The record of one organisation with all that belongs to it. It opens for a new one, or on a list of
/// organisations to walk through. When it closes, gDialogResult has the key of the organisation it showed or
/// saved last, 0 for none.
class frmAddOrg final : public FormDialog, private OrganisationView
{
    Q_OBJECT

public:
    explicit frmAddOrg(QWidget *parent = nullptr);

    /// Stands on a list of organisations ("?" keys) and shows one of them, to look at or, where the user may,
    /// to change.
    void OpenRecords(const QStringList &keys, bool edit);
    /// Opens the form for a new organisation, modal; the new OrganRef, 0 for none.
    static int AddRecord(QWidget *parent);
    /// Opens the form on a list of organisations, modal.
    static void EditRecords(const QStringList &keys, bool edit, QWidget *parent);

    void done(int result) override;

protected:
    bool MayLeave() override;

private:
    enum class State { NewRecord, View, Edit };

    // What the record is read into.
    void ShowLoading(const QString &notice) override;
    void ShowDeleted(const QString &placeholder) override;
    void ShowRecord(const OrganisationRecord &record) override;
    ListModel &AvailCriteria() override;
    ListModel &UsedCriteria() override;
    ListModel &ContactInfo() override;
    ListModel &AvailFac() override;
    ListModel &UsedFac() override;
    ListModel &AvailVenues() override;
    ListModel &UsedVenues() override;
    void ShowLoaded() override;

    void BuildButtons(FormBuilder &form);
    void WatchChanges();
    void ShowOrganisation(int organRef);
    void SetState(State state);
    void ShowCaption();
    bool Save();
    /// Shows what became of an organisation that another workstation deleted; true if it did.
    bool IsDeleted();
    void NewRecord();
    void ToggleEdit();
    void ClearAll();

    State m_state = State::NewRecord;
    int m_organRef = 0;  ///< the organisation shown; 0 for a new one
    bool m_gone = false; ///< the organisation shown could not be read or is no more

    QLabel *m_warn;
    QTabWidget *m_tabs;
    OrganisationDetailsPage *m_details;
    NotesPage *m_notes;
    OrganisationContactsPage *m_contacts;
    OrganisationPlacesPage *m_places;
    QPushButton *m_okBtn;
    QPushButton *m_newBtn;
    QPushButton *m_editBtn;
    QPushButton *m_prevBtn;
    QPushButton *m_nextBtn;
    QPushButton *m_clearBtn;
    QPushButton *m_exitBtn;
    ModifiedMark *m_modified;
    RecordNavigator *m_navigator;
};
