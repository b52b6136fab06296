#pragma once

#include "forms/frames/ItemDialog.h"

class QLineEdit;

/// One value of an attribute.
class frmAddAttributeVal final : public ItemDialog
{
    Q_OBJECT

public:
    frmAddAttributeVal(int attributeRef, const QString &attributeName, QWidget *parent = nullptr);

    /// Changes a value instead of adding one.
    void EditValue(int key, const QString &value);

private:
    int Store() override;

    int m_attributeRef;
    QString m_attributeName;
    QLineEdit *m_attribName;
};
