#pragma once

#include "contacts/ContactRecord.h"
#include "controls/ComboModel.h"
#include "organisations/OrganisationODBC.h"

#include <QWidget>

class FormBuilder;
class QGroupBox;
class QLineEdit;
class TypedCombo;

/// A person's organisation and position, with the organisation's address to read.
class ContactBusinessPage final : public QWidget, private ContactOrganisationView
{
    Q_OBJECT

public:
    explicit ContactBusinessPage(QWidget *parent = nullptr);

    void FillLists();
    void Load(const ContactRecord &record);
    void Store(ContactRecord &record) const;
    void Clear();
    void SetLocked(bool locked);

    QGroupBox *Group() const { return m_group; }
    QWidget *First() const;

private:
    void BuildAddress(FormBuilder &form);
    void ShowOrganisation(const ContactOrganisation &organisation) override;
    void ShowChosen();

    ComboModel m_organisations;
    QGroupBox *m_group;
    TypedCombo *m_organList;
    QLineEdit *m_jobTitle;
    QLineEdit *m_addr[4];
    QLineEdit *m_postcode;
    QLineEdit *m_city;
    QLineEdit *m_county;
    QLineEdit *m_country;
    QLineEdit *m_tel;
    QLineEdit *m_telOut;
    QLineEdit *m_fax;
    QLineEdit *m_email;
    QLineEdit *m_url;
};
