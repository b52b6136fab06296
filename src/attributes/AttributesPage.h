#pragma once

#include "controls/TreeModel.h"

#include <QWidget>

class QPushButton;
class TreeView;

/// The "Custom Attributes" tab of a record: every attribute with its values, those of the record ticked.
class AttributesPage final : public QWidget
{
    Q_OBJECT

public:
    /// `section` is the kind of the records.
    explicit AttributesPage(int section, QWidget *parent = nullptr);

    void FillLists();
    /// False if the record may have fewer values now than the page shows.
    bool StoreAttributes(int recordRef) const;
    void Clear();
    void SetLocked(bool locked);

    TreeModel &AttribList() { return m_attributes; }

private:
    void Toggle(TreeNode *node);

    int m_section;
    bool m_locked = false;
    TreeModel m_attributes;
    TreeView *m_list;
    QPushButton *m_clearBtn;
};
