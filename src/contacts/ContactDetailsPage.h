#pragma once

#include "contacts/ContactRecord.h"
#include "controls/ComboModel.h"
#include "forms/RequiredMarks.h"

#include <QWidget>

class ComboBox;
class ContactBusinessPage;
class FormBuilder;
class QDateEdit;
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
    void Store(ContactRecord &record) const;
    void Clear();
    void SetLocked(bool locked);
    /// Stands in for the name of a person who is no more.
    void ShowPlaceholder(const QString &text);

    const RequiredMarks &Required() const { return m_required; }
    /// "Surname, Forename" as the fields have it.
    QString Name() const;

private:
    QGroupBox *BuildPerson(FormBuilder &form);
    QGroupBox *BuildAddress(FormBuilder &form);
    QGroupBox *BuildReach(FormBuilder &form);
    QGroupBox *BuildReferences(FormBuilder &form);
    void GenderFromTitle();
    void FillEmergencyContacts(const QString &newContactRow);
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

    TypedCombo *m_desList;
    QLineEdit *m_forename;
    QLineEdit *m_surname;
    QDateEdit *m_dob;
    TypedCombo *m_ethnicList;
    TypedCombo *m_contactList;
    QLineEdit *m_addr[4];
    TypedCombo *m_cityList;
    QLineEdit *m_postcode;
    TypedCombo *m_countyList;
    TypedCombo *m_countryList;
    QLineEdit *m_telDay;
    QLineEdit *m_telExt;
    QLineEdit *m_telEve;
    QLineEdit *m_fax;
    QLineEdit *m_email;
    QLineEdit *m_url;
    QLineEdit *m_refId[5];
    ContactBusinessPage *m_business;
    QWidgetList m_personal; ///< every field of the person's own, to lock
};
