#pragma once

#include "contacts/ContactRecordODBC.h"
#include "forms/FormDialog.h"

class AttributesPage;
class ContactCoursesPage;
class ContactDetailsPage;
class ContactGroupsPage;
class ContactNotesPage;
class ContactRolesPage;
class FormBuilder;
class QLabel;
class QPushButton;
class QTabWidget;
class RecordNavigator;

/// The record of one person. It opens for a new person, or on a list of people to walk through; a saved
/// record is shown first and edited on request. When it closes, gDialogResult has the key of the person it
/// showed or saved last, 0 for none.
class frmAddContact final : public FormDialog, private ContactView
{
    Q_OBJECT

public:
    explicit frmAddContact(QWidget *parent = nullptr);

    /// Stands on a list of people ("?" keys) and shows one of them.
    void OpenRecords(const QStringList &keys, int index = 0);
    /// Opens the form for a new person, modal; the new ContactRef, 0 for none.
    static int AddRecord(QWidget *parent);

    void done(int result) override;

protected:
    bool MayLeave() override;

private:
    enum class State { NewRecord, View, Edit };

    // What the record is read into.
    void ShowLoading(const QString &notice) override;
    void ShowDeleted(const QString &placeholder) override;
    void ShowRecord(const ContactRecord &record) override;
    ListModel &AvailCriteria() override;
    ListModel &UsedCriteria() override;
    TreeModel &AttribList() override;
    ListModel &RolesInfo() override;
    ListModel &GroupList() override;
    TreeModel &GroupTree() override;
    void ShowLoaded() override;

    void BuildButtons(FormBuilder &form);
    void ShowContact(int contactRef);
    void SetState(State state);
    void ShowCaption();
    void ShowTab(int tab);
    void WatchChanges();
    bool Save();
    bool StoreLists();
    /// True if the organisation's characteristics were given to the person.
    bool OfferOrganisationCharacteristics(int organRef);

    void NewRecord();
    void ToggleEdit();
    void ClearAll();
    void Refresh();

    State m_state = State::NewRecord;
    int m_contactRef = 0; ///< the person shown; 0 for a new one
    bool m_gone = false;  ///< the person shown could not be read or is no more

    QLabel *m_warn;
    QTabWidget *m_tabs;
    ContactDetailsPage *m_details;
    ContactNotesPage *m_notes;
    AttributesPage *m_attributes;
    ContactRolesPage *m_roles;
    ContactGroupsPage *m_groups;
    ContactCoursesPage *m_courses;
    QPushButton *m_okBtn;
    QPushButton *m_newBtn;
    QPushButton *m_editBtn;
    QPushButton *m_prevBtn;
    QPushButton *m_nextBtn;
    QPushButton *m_clearBtn;
    QPushButton *m_refreshBtn;
    QPushButton *m_exitBtn;
    ModifiedMark *m_modified;
    RecordNavigator *m_navigator;
};
