#pragma once

#include "controls/ListModel.h"
#include "database/statements/Rights.h"
#include "forms/frames/FormDialog.h"
#include "forms/frames/ListButtons.h"

#include <optional>

class ListView;

/// A maintenance screen: vocabularies on the left, the rows of the chosen one on the right, and the buttons
/// that add, change and delete them.
class SectionsDialog : public FormDialog
{
    Q_OBJECT

protected:
    SectionsDialog(const QString &name, const QString &title, QWidget *parent);

    /// Shows the sections, each by its number, and chooses the first; for the end of a constructor.
    void ShowSections(const QList<std::pair<int, QString>> &sections);
    int SectionNumber() const;
    ListModel &Items() { return m_items; }
    const ListButtons &Buttons() const { return *m_buttons; }
    /// Fills the list again; the same row stays chosen.
    void Refresh();
    void ShowSection();
    void SelectKey(const QString &key);
    /// Puts a new row in its place and chooses it.
    void AddRow(const QString &key, const QString &text);

private:
    /// Reads the rows of the section and names their columns.
    virtual void FillItems() = 0;
    /// Enables the buttons by the user's rights.
    virtual void ApplyRights(bool chosen) = 0;
    virtual void AddItem() = 0;
    virtual void EditItem() = 0;
    virtual void DeleteItems() = 0;
    void OnSelection();

    ListModel m_sections;
    ListModel m_items;
    ListView *m_sectionList = nullptr;
    ListView *m_list = nullptr;
    std::optional<ListButtons> m_buttons;
};
