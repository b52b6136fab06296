#include "attributes/AttributesPage.h"

#include "attributes/CustomAttribModule.h"
#include "forms/frames/FormBuilder.h"

AttributesPage::AttributesPage(QWidget *parent)
    : QWidget(parent)
{
    FormBuilder form(this);
    m_list = form.Tree(QStringLiteral("AttribList"), QStringLiteral("Attri&butes:"), m_attributes);
    m_list->SetEmptyText(QStringLiteral("No custom attributes have been defined."));
    m_clearBtn = form.Button(QStringLiteral("ClearAttribBtn"), QStringLiteral("C&lear Attributes"));
    connect(m_list, &TreeView::TickAsked, this, &AttributesPage::Toggle);
    connect(m_clearBtn, &QPushButton::clicked, this, &AttributesPage::Clear);
}

void AttributesPage::FillLists()
{
    ADO_CustomAttrib_Show(m_attributes, AttribSection::Contacts);
}

void AttributesPage::Clear()
{
    m_attributes.SetAllTicks(TreeTick::Off);
}

void AttributesPage::SetLocked(bool locked)
{
    m_locked = locked;
    m_clearBtn->setEnabled(!locked);
}

void AttributesPage::Toggle(TreeNode *node)
{
    if (!m_locked)
        CustomAttrib_Toggle(m_attributes, node);
}
