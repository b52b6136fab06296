#pragma once

#include "contacts/lists/VocabularyModule.h"
#include "contacts/manager/ContactSearchQuery.h"
#include "controls/ComboModel.h"

#include <QWidget>

#include <optional>

class CaptionLabel;
class ComboBox;
class FormBuilder;
class MoneyField;
class QLineEdit;
class QToolButton;

/// The "Contact Details" tab of the search: what is asked of the person, the address and the organisation.
class ContactSearchPage final : public QWidget
{
    Q_OBJECT

public:
    explicit ContactSearchPage(QWidget *parent = nullptr);

    void FillLists();
    /// Puts what the fields ask for into the criteria.
    void Store(ContactSearchCriteria &criteria) const;
    /// Empties the fields. Which of them ask for the opposite stays as it is.
    void Clear();
    QWidget *First() const;

private:
    /// A criterion with an "=" of its own: a list where it has a vocabulary, else a text.
    struct Field {
        SearchField field;
        QString name;
        QString caption;
        std::optional<ContactSection> vocabulary{};
    };

    static constexpr size_t Place(SearchField field) { return static_cast<size_t>(field); }

    void BuildPerson(FormBuilder &form);
    void BuildAddress(FormBuilder &form);
    void BuildOrganisation(FormBuilder &form);
    /// The caption and the "=" of a criterion, before its field.
    CaptionLabel *Equals(FormBuilder &form, SearchField field, const QString &caption);
    void Add(FormBuilder &form, std::initializer_list<Field> fields);
    ComboBox *List(FormBuilder &form, SearchField field, const QString &name);
    void Gender(FormBuilder &form);
    void Age(FormBuilder &form);
    void LeaveAgeTo();

    std::array<QToolButton *, searchFieldCount> m_equals{};
    std::array<QLineEdit *, searchFieldCount> m_texts{};
    std::array<ComboModel, searchFieldCount> m_lists;
    std::vector<std::pair<SearchField, ContactSection>> m_vocabularies;
    MoneyField *m_ageFrom = nullptr;
    MoneyField *m_ageTo = nullptr;
};
