#pragma once

#include "contacts/lists/VocabularyModule.h"
#include "controls/ComboModel.h"
#include "forms/fields/RequiredMarks.h"
#include "organisations/record/OrganisationRecord.h"

#include <QWidget>

#include <vector>

class FormBuilder;
class QCheckBox;
class QGroupBox;
class QLineEdit;
class TypedCombo;

/// The "Details" tab of an organisation: name, address and ways to reach it.
class OrganisationDetailsPage final : public QWidget
{
    Q_OBJECT

public:
    explicit OrganisationDetailsPage(QWidget *parent = nullptr);

    void FillLists();
    void Load(const OrganisationRecord &record);
    void Store(OrganisationRecord &record) const;
    void Clear();
    void SetLocked(bool locked);
    /// Stands in for the name of an organisation that is gone.
    void ShowPlaceholder(const QString &text);

    const RequiredMarks &Required() const { return m_required; }
    QString Name() const;

private:
    struct Choice {
        TypedCombo *field;
        int OrganisationRecord::*column;
        ContactSection section;
    };
    /// Ties a field to the column that it shows.
    QLineEdit *Text(QLineEdit *field, QString OrganisationRecord::*column);
    void AddChoice(TypedCombo *field, int OrganisationRecord::*column, ContactSection section);
    QGroupBox *BuildName(FormBuilder &form);
    QGroupBox *BuildAddress(FormBuilder &form);
    QGroupBox *BuildReach(FormBuilder &form);

    ComboModel m_cities;
    ComboModel m_counties;
    ComboModel m_countries;
    RequiredMarks m_required;
    QLineEdit *m_name;
    QCheckBox *m_board;
    std::vector<std::pair<QLineEdit *, QString OrganisationRecord::*>> m_texts;
    std::vector<Choice> m_choices;
};
