#include "attributes/frmAddAttributeVal.h"

#include "attributes/CustomAttribModule.h"
#include "forms/frames/FormBuilder.h"

frmAddAttributeVal::frmAddAttributeVal(AttributeRef attributeRef, const QString &attributeName,
                                       QWidget *parent)
    : ItemDialog(QStringLiteral("frmAddAttributeVal"), u"Add Attribute Value to " % attributeName, parent)
    , m_attributeRef(attributeRef)
    , m_attributeName(attributeName)
{
    FormBuilder form(this);
    m_attribName = form.Text(QStringLiteral("AttribName"), QStringLiteral("&Name:"));
    // The title contains the attribute's name, which most window managers would cut off on so narrow a form.
    m_attribName->setMinimumWidth(50 * fontMetrics().averageCharWidth());
    Required().Add(form.Label(), m_attribName);
    AddButtons(form);
    m_attribName->setFocus();
}

void frmAddAttributeVal::EditValue(AttributeValueRef valueRef, const QString &value)
{
    BeginEditing(valueRef.number);
    setWindowTitle(u"Update Attribute Value of " % m_attributeName);
    m_attribName->setText(value);
    m_attribName->setCursorPosition(0);
    EndReading(true, {});
}

int frmAddAttributeVal::Store()
{
    return Key() > 0
               ? CustomAttrib_UpdateAttribVal(AttributeValueRef(Key()), m_attribName->text(), m_attributeRef)
               : CustomAttrib_AddAttribVal(m_attribName->text(), m_attributeRef);
}
