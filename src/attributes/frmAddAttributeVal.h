#pragma once

#include "forms/FormDialog.h"
#include "forms/RequiredMarks.h"

class QLineEdit;
class QPushButton;

/// One value of an attribute. On success gDialogResult has its AttributeValueRef.
class frmAddAttributeVal final : public FormDialog
{
    Q_OBJECT

public:
    frmAddAttributeVal(int attributeRef, const QString &attributeName, QWidget *parent = nullptr);

    /// Changes a value instead of adding one.
    void EditValue(int key, const QString &value);

protected:
    bool MayLeave() override;

private:
    void Save();

    int m_attributeRef;
    QString m_attributeName;
    int m_key = 0; ///< the value to change; 0 to add one
    RequiredMarks m_required;
    QLineEdit *m_attribName;
    QPushButton *m_addBtn;
    ModifiedMark *m_modified;
};
