#pragma once

#include "controls/ListModel.h"
#include "forms/frames/FormDialog.h"

class ImportState;
class ListView;
class QCheckBox;
class QPushButton;
struct TreeNode;

/// Chooses the target of one field of the imported file.
class frmChangeMap final : public FormDialog
{
    Q_OBJECT

public:
    frmChangeMap(const ImportState &state, int row, QWidget *parent = nullptr);

    /// The chosen target; null if the field is not to be imported.
    const TreeNode *Target() const;

private:
    void ShowState();

    const ImportState &m_state;
    ListModel m_fields;
    ListView *FieldList;
    QCheckBox *ImportField;
    QPushButton *ExitBtn;
};
