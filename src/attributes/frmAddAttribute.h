#pragma once

#include "attributes/CustomAttribODBC.h"
#include "controls/ListModel.h"
#include "forms/FormDialog.h"
#include "forms/RequiredMarks.h"

class FormBuilder;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

/// An attribute: its name, what it applies to, and how many of its values a record can have. On success
/// gDialogResult has its AttributeRef.
class frmAddAttribute final : public FormDialog, private CustomAttribView
{
    Q_OBJECT

public:
    explicit frmAddAttribute(QWidget *parent = nullptr);

    /// Loads an attribute to change instead of adding one.
    void EditAttrib(int key);

protected:
    bool MayLeave() override;

private:
    void ShowAttrib(int key, const CustomAttrib &attrib) override;
    void BuildFields(FormBuilder &form);
    void Save();

    int m_key = 0;       ///< the attribute to change; 0 to add one
    bool m_gone = false; ///< the attribute to change could not be read
    ListModel m_sections;
    RequiredMarks m_required;
    QLabel *m_warn;
    QLineEdit *m_attribName;
    QRadioButton *m_multi;
    QRadioButton *m_single;
    QPushButton *m_addBtn;
    ModifiedMark *m_modified;
};
