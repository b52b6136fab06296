#include "attributes/frmCustomAttributes.h"

#include "attributes/CustomAttribModule.h"
#include "attributes/frmAddAttribute.h"
#include "attributes/frmAddAttributeVal.h"
#include "controls/ListModel.h"
#include "core/session/Session.h"
#include "database/statements/Security.h"
#include "database/values/GlobalCode.h"
#include "forms/frames/FormBuilder.h"

namespace
{
QString AttributeKey(int attributeRef)
{
    return u'!' % SqlNumber(attributeRef);
}

QString ValueKey(int valueRef, int attributeRef)
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
    ADO_CustomAttrib_Show(m_attributes, AttribSection::contacts);
    // Here values are maintained, not given to anybody, so they need no check box.
    m_attributes.SetAllTicks(TreeTick::None);
    if (!m_attributes.Selected())
        m_attributes.SelectFirst();
    EnableButtons();
}

void frmCustomAttributes::ShowSaved(const QString &key)
{
    const bool isSaved = gDialogResult > 0;
    gDialogResult = 0;
    ShowAttributes();
    const TreeNode *node = isSaved ? m_attributes.Find(key) : nullptr;
    if (!node)
        return;
    m_attributes.Select(node);
    m_list->ShowNode(node);
}

void frmCustomAttributes::AddAttribute()
{
    gDialogResult = 0;
    frmAddAttribute(this).exec();
    ShowSaved(AttributeKey(gDialogResult));
}

void frmCustomAttributes::AddValue()
{
    const TreeNode *node = m_attributes.Selected();
    if (!node)
        return;
    const TreeNode *attribute = IsAttribute(*node) ? node : node->parent;
    const int attributeRef = KeyNumber(attribute->key);
    const QString name = attribute->text;
    gDialogResult = 0;
    frmAddAttributeVal(attributeRef, name, this).exec();
    ShowSaved(ValueKey(gDialogResult, attributeRef));
}

void frmCustomAttributes::EditSelected()
{
    const TreeNode *node = m_attributes.Selected();
    if (!node)
        return;
    const QString key = node->key;
    gDialogResult = 0;
    if (IsAttribute(*node)) {
        frmAddAttribute form(this);
        form.EditAttrib(KeyNumber(key));
        form.exec();
    } else {
        const QString value = node->text;
        frmAddAttributeVal form(KeyNumber(node->parent->key), QString(node->parent->text), this);
        form.EditValue(KeyNumber(key), value);
        form.exec();
    }
    ShowSaved(key);
}

void frmCustomAttributes::DeleteSelected()
{
    const TreeNode *node = m_attributes.Selected();
    if (!node)
        return;
    const QString key = node->key;
    const auto answer =
        Dialogs::MsgBox(u"Okay to delete item '" % node->text % u'\'', QStringLiteral("Confirm Deletion"),
                        Dialogs::Buttons::YesNo, Dialogs::Icon::Question);
    if (answer != Dialogs::Answer::Yes || !CustomAttrib_Delete(key))
        return;
    m_attributes.Remove(key);
    m_attributes.Select(m_attributes.NodeAt(m_attributes.Selection()->currentIndex()));
    EnableButtons();
}
