#pragma once

#include "contacts/record/ContactRecordODBC.h"
#include "contacts/record/ContactVersion.h"
#include "database/values/Keys.h"
#include "forms/frames/RecordForm.h"

class AttributesPage;
class ContactCoursesPage;
class ContactDetailsPage;
class ContactGroupsPage;
class ContactHint;
class ContactNotesPage;
class ContactRolesPage;

/// The record of one person.
class frmAddContact final : public RecordForm
{
    Q_OBJECT

public:
    explicit frmAddContact(QWidget *parent = nullptr);

    /// Opens the form for a new person, modal; the new ContactRef, 0 for none.
    static int AddRecord(QWidget *parent) { return frmAddContact(parent).Run(); }
    /// Opens the form on a list of people ("?" keys), modal. True where one was on it when it closed.
    static bool ShowRecords(const QStringList &keys, QWidget *parent);
    /// Opens the form on a list of people, or for a new person without one, beside `caller`, which stays in
    /// use. Where one is open on that very person, it comes to the front. `changed`: see
    /// RecordForm::OpenBeside.
    static void OpenBeside(const QStringList &keys, QWidget *caller, const std::function<void()> &changed);

private:
    bool Exists(int key) override;
    Found ReadRecord(int key) override;
    void RecordRead() override;
    void ShowPlaceholder(const QString &text) override;
    RecordSaved StoreRecord(int key, Progress &progress) override;
    bool AfterStore(int key) override;
    void ClearPages() override;
    void EmptyPages() override;
    void DetachPages() override;
    void ApplyState(State state) override;
    const RequiredMarks &Required() const override;
    QString RecordName() const override;
    bool MayStartNew() override { return MayLeave(); }

    void ShowRecord(const ContactRecord &record);
    void BuildPages();
    void WatchChanges();
    ContactLists Lists();
    void TellPages(ContactRef contactRef);
    void ShowTab(int tab);
    /// True if the user wants the person to have the characteristics of the organisation.
    bool WantsOrganisationCharacteristics(OrganRef organRef, ContactRef contactRef) const;

    ContactDetailsPage *m_details;
    ContactNotesPage *m_notes;
    AttributesPage *m_attributes;
    ContactRolesPage *m_roles;
    ContactGroupsPage *m_groups;
    ContactCoursesPage *m_courses;
    ContactHint *m_hint;
    ContactRecord m_record; ///< as it was read or stored last
    FieldValues m_seen;     ///< the stored version that the screen set out from; empty = not known
};
