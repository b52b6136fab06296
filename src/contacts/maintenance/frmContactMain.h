#pragma once

#include "contacts/lists/VocabularyModule.h"
#include "controls/ListModel.h"
#include "database/statements/Rights.h"
#include "forms/frames/FormDialog.h"
#include "forms/frames/ListButtons.h"

#include <optional>

class ListView;

/// The vocabularies of the contact side: titles, towns, characteristics, groups, organisations and so on.
class frmContactMain final : public FormDialog
{
    Q_OBJECT

public:
    /// The row that a section's dialog stored, and its texts.
    struct Stored {
        int key;
        RefLabel item;
    };

    explicit frmContactMain(QWidget *parent = nullptr);

private:
    void Build();
    ContactSection Section() const;
    Level UserLevel() const; ///< the user's level of the section's right
    void ShowSection();
    void Refresh();
    void ApplyRights();
    void SelectKey(const QString &key);

    void AddItem();
    void AddOrganisation();
    void EditItem();
    void DeleteItems();
    /// Opens the section's dialog, not that of organisations, for a new row or for the one of `key`; the
    /// texts of what was stored.
    std::optional<Stored> OpenDialog(int key);

    ListModel m_sections;
    ListModel m_items;
    ListView *m_list;
    std::optional<ListButtons> m_buttons;
};
