#pragma once

#include "database/values/Keys.h"
#include "forms/frames/ItemDialog.h"

class QLineEdit;

/// One value of an attribute.
class frmAddAttributeVal final : public ItemDialog
{
    Q_OBJECT

public:
    frmAddAttributeVal(AttributeRef attributeRef, const QString &attributeName, QWidget *parent = nullptr);

    /// Changes a value instead of adding one.
    void EditValue(AttributeValueRef valueRef, const QString &value);

private:
    int Store() override;

    AttributeRef m_attributeRef;
    QString m_attributeName;
    QLineEdit *m_attribName;
};
