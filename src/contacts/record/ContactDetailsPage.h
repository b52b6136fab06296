#pragma once

#include "contacts/lists/VocabularyModule.h"
#include "contacts/record/ContactHint.h"
#include "contacts/record/ContactRecord.h"
#include "controls/ComboModel.h"
#include "forms/fields/RequiredMarks.h"

#include <QWidget>

#include <vector>

class ContactBusinessPage;
class DateField;
class FormBuilder;
class QGroupBox;
class QLineEdit;
class TypedCombo;

/// The "Details" tab of a person: name, address, ways to reach the person, and the organisation.
class ContactDetailsPage final : public QWidget
{
    Q_OBJECT

public:
    explicit ContactDetailsPage(QWidget *parent = nullptr);

    void FillLists();
    void Load(const ContactRecord &record);
    void Store(ContactRecord &record);
    void Clear();
    void SetLocked(bool locked);
    /// Stands in for the name of a person who is gone.
    void ShowPlaceholder(const QString &text);

    /// Marks the forename as missing where `text` is empty, until it is next changed itself.
    void MarkForename(const QString &text);
    const RequiredMarks &Required() const { return m_required; }
    /// "Surname, Forename" as the fields have it, the placeholder of one who is gone.
    QString Name() const;
    ContactHint::Fields Typed() const { return {m_forename, m_surname, m_email}; }
    int OrganRef() const; ///< 1 = none

private:
    struct Choice {
        TypedCombo *field;
        int ContactRecord::*column;
        ContactSection section;
    };
    /// Ties a field to the column that it shows.
    QLineEdit *Text(QLineEdit *field, QString ContactRecord::*column);
    TypedCombo *AddChoice(TypedCombo *field, int ContactRecord::*column, ContactSection section);
    QGroupBox *BuildPerson(FormBuilder &form);
    QGroupBox *BuildAddress(FormBuilder &form);
    QGroupBox *BuildReach(FormBuilder &form);
    QGroupBox *BuildReferences(FormBuilder &form);
    void GenderFromTitle();
    void FillEmergencyContacts();
    /// The list of people ends with the row for a new one, however it was filled.
    void KeepNewContactRow();
    void AddEmergencyContact();

    ComboModel m_titles;
    ComboModel m_genders;
    ComboModel m_ethnicTypes;
    ComboModel m_emergencyContacts;
    ComboModel m_cities;
    ComboModel m_counties;
    ComboModel m_countries;
    RequiredMarks m_required;
    bool m_loading = false;
    QString m_newContactRow; ///< what it says the next time that the list is filled

    QLineEdit *m_forename;
    QLineEdit *m_surname;
    QLineEdit *m_email;
    DateField *m_dob;
    TypedCombo *m_contactList;
    std::array<QLineEdit *, 4> m_altRef;
    ContactBusinessPage *m_business;
    std::vector<std::pair<QLineEdit *, QString ContactRecord::*>> m_texts;
    std::vector<Choice> m_choices;
    QWidgetList m_personal; ///< every field of the person's own, to lock
};
