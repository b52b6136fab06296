#pragma once

#include "contacts/record/ContactRecord.h"
#include "controls/ComboModel.h"
#include "organisations/lists/OrganisationODBC.h"

#include <QWidget>

#include <vector>

class FormBuilder;
class QGroupBox;
class QLineEdit;
class QPushButton;
class TypedCombo;

/// A person's organisation and position, with the organisation's address to read.
class ContactBusinessPage final : public QWidget
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
    int OrganRef() const; ///< 1 = none

private:
    /// Ties a field to what it shows of the organisation.
    QLineEdit *Text(QLineEdit *field, QString ContactOrganisation::*column);
    void BuildAddress(FormBuilder &form);
    void ShowOrganisation(const ContactOrganisation &organisation);
    void ShowChosen();
    void EnableEdit();
    void EditOrganisation();

    ComboModel m_organisations;
    QGroupBox *m_group;
    TypedCombo *m_organList;
    QLineEdit *m_jobTitle;
    QPushButton *m_editOrgBtn;
    bool m_locked = false;
    std::vector<std::pair<QLineEdit *, QString ContactOrganisation::*>> m_texts;
};
