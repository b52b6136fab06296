#include "attributes/frmCustomAttributes.h"

#include "attributes/CustomAttribModule.h"
#include "attributes/frmAddAttribute.h"
#include "attributes/frmAddAttributeVal.h"
#include "controls/ListModel.h"
#include "core/session/Session.h"
#include "database/statements/Security.h"
#include "database/values/GlobalCode.h"
#include "forms/frames/FormBuilder.h"
#include "forms/lists/DeleteSelected.h"

namespace
{
QString AttributeKey(AttributeRef attributeRef)
{
    return u'!' % SqlNumber(attributeRef);
}

QString ValueKey(AttributeValueRef valueRef, AttributeRef attributeRef)
{
    return u'?' % SqlNumber(valueRef) % AttributeKey(attributeRef);
}

bool IsAttribute(const TreeNode &node)
{
    return node.key.startsWith(u'!');
}
} // namespace

frmCustomAttributes::frmCustomAttributes(QWidget *parent)
    : FormDialog(QStringLiteral("frmCustomAttributes"), QStringLiteral("Custom Attributes"), parent)
{
    FormBuilder form(this);
    m_list = form.Tree(QStringLiteral("AttribList"), QStringLiteral("&Attributes and their values:"),
                       m_attributes);
    m_list->SetEmptyText(QStringLiteral("No custom attributes yet."));
    BuildButtons(form);
    connect(m_list, &TreeView::Opened, m_editBtn, &QPushButton::click);
    connect(m_list, &TreeView::DeletePressed, m_delBtn, &QPushButton::click);
    connect(m_attributes.Selection(), &QItemSelectionModel::selectionChanged, this,
            &frmCustomAttributes::EnableButtons);
    ShowAttributes();
    resize(84 * fontMetrics().averageCharWidth(), 26 * fontMetrics().lineSpacing());
    m_list->setFocus();
}

void frmCustomAttributes::BuildButtons(FormBuilder &form)
{
    form.BeginButtons(FormBuilder::Align::Start);
    m_addAttribBtn = form.Button(QStringLiteral("AddAttribBtn"), QStringLiteral("&New Attribute"));
    m_addValBtn = form.Button(QStringLiteral("AddValBtn"), QStringLiteral("New &Value"));
    m_editBtn = form.Button(QStringLiteral("EditBtn"), QStringLiteral("&Edit"));
    m_delBtn = form.Button(QStringLiteral("DelBtn"), QStringLiteral("&Delete"));
    form.Gap();
    QPushButton *refresh = form.Button(QStringLiteral("RefBtn"), QStringLiteral("&Refresh"));
    QPushButton *exit = form.Button(QStringLiteral("ExitBtn"), QStringLiteral("E&xit"));
    form.EndButtons();
    connect(m_addAttribBtn, &QPushButton::clicked, this, &frmCustomAttributes::AddAttribute);
    connect(m_addValBtn, &QPushButton::clicked, this, &frmCustomAttributes::AddValue);
    connect(m_editBtn, &QPushButton::clicked, this, &frmCustomAttributes::EditSelected);
    connect(m_delBtn, &QPushButton::clicked, this, &frmCustomAttributes::DeleteSelected);
    connect(refresh, &QPushButton::clicked, this, &frmCustomAttributes::ShowAttributes);
    connect(exit, &QPushButton::clicked, this, &frmCustomAttributes::reject);
}

void frmCustomAttributes::EnableButtons()
{
    const Level level = UserRight(Right::CustomAttributes);
    const bool isSelected = m_attributes.Selected();
    m_addAttribBtn->setEnabled(level >= Level::Add);
    m_addValBtn->setEnabled(level >= Level::Add && isSelected);
    m_editBtn->setEnabled(level >= Level::Edit && isSelected);
    m_editBtn->setText(level >= Level::Edit ? QStringLiteral("&Edit") : QStringLiteral("&View"));
    m_delBtn->setEnabled(level >= Level::Full && isSelected);
}

void frmCustomAttributes::ShowAttributes()
{
    ADO_CustomAttrib_Show(m_attributes, AttribSection::Contacts);
    // Here values are maintained, not given to anybody, so they need no check box.
    m_attributes.SetAllTicks(TreeTick::None);
    if (!m_attributes.Selected())
        m_attributes.SelectFirst();
    EnableButtons();
}

void frmCustomAttributes::ShowSaved(int stored, const QString &key)
{
    ShowAttributes();
    const TreeNode *node = stored > 0 ? m_attributes.Find(key) : nullptr;
    if (!node)
        return;
    m_attributes.Select(node);
    m_list->ShowNode(node);
}

void frmCustomAttributes::AddAttribute()
{
    const int stored = frmAddAttribute(this).Run();
    ShowSaved(stored, AttributeKey(AttributeRef(stored)));
}

void frmCustomAttributes::AddValue()
{
    const TreeNode *node = m_attributes.Selected();
    if (!node)
        return;
    const TreeNode *attribute = IsAttribute(*node) ? node : node->parent;
    const AttributeRef attributeRef(KeyNumber(attribute->key));
    const QString name = attribute->text;
    const int stored = frmAddAttributeVal(attributeRef, name, this).Run();
    ShowSaved(stored, ValueKey(AttributeValueRef(stored), attributeRef));
}

void frmCustomAttributes::EditSelected()
{
    const TreeNode *node = m_attributes.Selected();
    if (!node)
        return;
    const QString key = node->key;
    int stored = 0;
    if (IsAttribute(*node)) {
        frmAddAttribute form(this);
        form.EditAttrib(AttributeRef(KeyNumber(key)));
        stored = form.Run();
    } else {
        const QString value = node->text;
        frmAddAttributeVal form(AttributeRef(KeyNumber(node->parent->key)), QString(node->parent->text),
                                this);
        form.EditValue(AttributeValueRef(KeyNumber(key)), value);
        stored = form.Run();
    }
    ShowSaved(stored, key);
}

void frmCustomAttributes::DeleteSelected()
{
    const TreeNode *node = m_attributes.Selected();
    if (!node)
        return;
    const QString key = node->key;
    if (!MayDelete(u"item '" % node->text % u'\'') || !CustomAttrib_Delete(key))
        return;
    m_attributes.Remove(key);
    m_attributes.Select(m_attributes.NodeAt(m_attributes.Selection()->currentIndex()));
    EnableButtons();
}
