#pragma once

#include "controls/TreeModel.h"

#include <QWidget>

class QPushButton;
class TreeView;

/// The "Custom Attributes" tab of a person: every attribute with its values, with those of the person ticked.
class AttributesPage final : public QWidget
{
    Q_OBJECT

public:
    explicit AttributesPage(QWidget *parent = nullptr);

    void FillLists();
    void Clear();
    void SetLocked(bool locked);

    TreeModel &AttribList() { return m_attributes; }

private:
    void Toggle(TreeNode *node);

    bool m_locked = false;
    TreeModel m_attributes;
    TreeView *m_list;
    QPushButton *m_clearBtn;
};
