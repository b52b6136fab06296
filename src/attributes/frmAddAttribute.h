#pragma once

#include "attributes/CustomAttribODBC.h"
#include "controls/ListModel.h"
#include "forms/frames/ItemDialog.h"

class FormBuilder;
class QLineEdit;
class QRadioButton;

/// An attribute: its name, what it applies to, and how many of its values a record can have.
class frmAddAttribute final : public ItemDialog
{
    Q_OBJECT

public:
    explicit frmAddAttribute(QWidget *parent = nullptr);

    /// Loads an attribute to change instead of adding one.
    void EditAttrib(AttributeRef attributeRef);

private:
    void ShowAttrib(const CustomAttrib &attrib);
    void BuildFields(FormBuilder &form);
    int Store() override;

    ListModel m_sections;
    QLineEdit *m_attribName;
    QRadioButton *m_multi;
    QRadioButton *m_single;
};
