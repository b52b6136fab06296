#include "attributes/frmAddAttributeVal.h"

#include "attributes/CustomAttribModule.h"
#include "core/Session.h"
#include "forms/FormBuilder.h"

frmAddAttributeVal::frmAddAttributeVal(int attributeRef, const QString &attributeName, QWidget *parent)
    : FormDialog(QStringLiteral("frmAddAttributeVal"), u"Add Attribute Value to " % attributeName, parent)
    , m_attributeRef(attributeRef)
    , m_attributeName(attributeName)
{
    FormBuilder form(this);
    m_attribName = form.Text(QStringLiteral("AttribName"), QStringLiteral("&Name:"));
    // The title tells the attribute, and most windows would cut it off above so short a form.
    m_attribName->setMinimumWidth(50 * fontMetrics().averageCharWidth());
    m_required.Add(form.Label(), m_attribName);
    form.BeginButtons();
    m_addBtn = form.DefaultButton(QStringLiteral("AddBtn"), QStringLiteral("&Add"));
    QPushButton *exit = form.Button(QStringLiteral("CanBtn"), QStringLiteral("E&xit"));
    form.EndButtons();

    m_modified = new ModifiedMark(m_addBtn, this);
    m_modified->Watch(this);
    connect(m_addBtn, &QPushButton::clicked, this, &frmAddAttributeVal::Save);
    connect(exit, &QPushButton::clicked, this, &frmAddAttributeVal::reject);
    m_attribName->setFocus();
}

void frmAddAttributeVal::EditValue(int key, const QString &value)
{
    m_key = key;
    setWindowTitle(u"Update Attribute Value of " % m_attributeName);
    m_addBtn->setText(QStringLiteral("&Update"));
    m_attribName->setText(value);
    m_modified->Clear();
}

bool frmAddAttributeVal::MayLeave()
{
    return m_modified->AskToSave([this] { Save(); });
}

void frmAddAttributeVal::Save()
{
    if (!m_required.Complete())
        return;
    const int key = m_key > 0 ? CustomAttrib_UpdateAttribVal(m_key, m_attribName->text(), m_attributeRef)
                              : CustomAttrib_AddAttribVal(m_attribName->text(), m_attributeRef);
    if (key < 1)
        return;
    m_modified->Clear();
    gDialogResult = key;
    accept();
}
