#pragma once

#include "forms/frames/RecordForm.h"
#include "organisations/record/OrganisationRecordODBC.h"
#include "organisations/record/OrganisationVersion.h"

class NotesPage;
class OrganisationContactsPage;
class OrganisationDetailsPage;
class OrganisationPlacesPage;

/// The record of one organisation with all that belongs to it.
class frmAddOrg final : public RecordForm
{
    Q_OBJECT

public:
    explicit frmAddOrg(QWidget *parent = nullptr);

    /// Opens the form for a new organisation, modal; the new OrganRef, 0 for none.
    static int AddRecord(QWidget *parent) { return frmAddOrg(parent).Run(); }
    /// Opens the form on a list of organisations ("?" keys), modal, to look at or, where the user may, to
    /// change.
    static void EditRecords(const QStringList &keys, bool edit, QWidget *parent);

private:
    bool Exists(int key) override;
    Found ReadRecord(int key) override;
    void ShowPlaceholder(const QString &text) override;
    RecordSaved StoreRecord(int key, Progress &progress) override;
    bool AfterStore(int key) override;
    void ClearPages() override;
    void EmptyPages() override;
    void ApplyState(State state) override;
    const RequiredMarks &Required() const override;
    QString RecordName() const override;
    bool MayStartNew() override;

    void ShowRecord(const OrganisationRecord &record);
    OrganisationLists Lists();
    void BuildPages();
    void WatchChanges();

    OrganisationDetailsPage *m_details;
    NotesPage *m_notes;
    OrganisationContactsPage *m_contacts;
    OrganisationPlacesPage *m_places;
    OrganisationRecord m_record; ///< as it was read or stored last
    FieldValues m_seen;          ///< the stored version that the screen set out from; empty = not known
};
