#pragma once

#include "controls/TreeModel.h"
#include "forms/frames/FormDialog.h"

class FormBuilder;
class QPushButton;
class TreeView;

/// The attributes that the site has defined, with their values.
class frmCustomAttributes final : public FormDialog
{
    Q_OBJECT

public:
    explicit frmCustomAttributes(QWidget *parent = nullptr);

private:
    void BuildButtons(FormBuilder &form);
    void EnableButtons();
    void ShowAttributes();
    /// Lists the attributes again after a dialog, and selects the one that it saved.
    void ShowSaved(int stored, const QString &key);
    void AddAttribute();
    void AddValue();
    void EditSelected();
    void DeleteSelected();

    TreeModel m_attributes;
    TreeView *m_list;
    QPushButton *m_addAttribBtn;
    QPushButton *m_addValBtn;
    QPushButton *m_editBtn;
    QPushButton *m_delBtn;
};
