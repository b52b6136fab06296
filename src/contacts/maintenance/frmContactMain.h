#pragma once

#include "contacts/lists/VocabularyModule.h"
#include "forms/frames/SectionsDialog.h"

#include <optional>

/// The vocabularies of the contact side: titles, towns, characteristics, groups, organisations and so on.
class frmContactMain final : public SectionsDialog
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
    ContactSection Section() const { return static_cast<ContactSection>(SectionNumber()); }
    void FillItems() override;
    void ApplyRights(bool chosen) override;
    void AddItem() override;
    void EditItem() override;
    void DeleteItems() override;
    void AddOrganisation();
    /// Opens the section's dialog, not that of organisations, for a new row or for the one of `key`; the
    /// texts of what was stored.
    std::optional<Stored> OpenDialog(int key);
};
