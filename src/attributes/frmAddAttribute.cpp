#include "attributes/frmAddAttribute.h"

#include "attributes/CustomAttribModule.h"
#include "database/values/GlobalCode.h"
#include "forms/frames/FormBuilder.h"

namespace
{
constexpr int nameLength = 255; // of the column
}

frmAddAttribute::frmAddAttribute(QWidget *parent)
    : ItemDialog(QStringLiteral("frmAddAttribute"), QStringLiteral("Add Attribute"), parent)
{
    FormBuilder form(this);
    BuildFields(form);
    std::vector<ListItem> sections;
    for (const AttribSectionInfo &section : AttribSections())
        sections.push_back({u'?' % SqlNumber(static_cast<int>(section.code)), section.caption});
    m_sections.Fill(std::move(sections));
    m_sections.SelectFirst();
    m_multi->setChecked(true);
    AddButtons(form);
    m_attribName->setFocus();
}

void frmAddAttribute::BuildFields(FormBuilder &form)
{
    AddNotice(form);
    m_attribName = form.Text(QStringLiteral("AttribName"), QStringLiteral("&Name:"), nameLength);
    m_attribName->setMinimumWidth(30 * fontMetrics().averageCharWidth());
    Required().Add(form.Label(), m_attribName);
    form.Place(new ListView(m_sections), QStringLiteral("ApplyList"), QStringLiteral("Applies &to:"), true);
    form.BeginGroup(QStringLiteral("Selection"));
    m_multi = form.Option(QStringLiteral("SelectOpt_0"), QStringLiteral("&Multi-Select Attribute"));
    m_multi->setToolTip(QStringLiteral("A record can have any number of its values"));
    m_single = form.Option(QStringLiteral("SelectOpt_1"), QStringLiteral("&Single Select Attribute"));
    m_single->setToolTip(QStringLiteral("A record can have at most one of its values"));
    form.EndGroup();
}

void frmAddAttribute::EditAttrib(AttributeRef attributeRef)
{
    setWindowTitle(QStringLiteral("Update Attribute"));
    BeginEditing(attributeRef.number);
    const ReadRow<CustomAttrib> attrib = ADO_CustomAttrib_ShowAttrib(attributeRef);
    if (attrib)
        ShowAttrib(*attrib);
    EndReading(static_cast<bool>(attrib), QStringLiteral("attribute"));
}

void frmAddAttribute::ShowAttrib(const CustomAttrib &attrib)
{
    m_attribName->setText(attrib.name);
    m_attribName->setCursorPosition(0);
    m_sections.ClearSelection();
    if (const int row = m_sections.Find(u'?' % SqlNumber(static_cast<int>(attrib.appliesTo))); row >= 0)
        m_sections.SelectOnly(row);
    (attrib.type == AttribType::Single ? m_single : m_multi)->setChecked(true);
}

int frmAddAttribute::Store()
{
    const std::vector<int> applies = m_sections.SelectedRows();
    if (applies.empty()) {
        Dialogs::MsgBox(QStringLiteral("Attribute must apply to at least one section."),
                        QStringLiteral("Form not complete"));
        return 0;
    }
    const CustomAttrib attrib{m_attribName->text(),
                              m_single->isChecked() ? AttribType::Single : AttribType::Multi,
                              static_cast<AttribSection>(KeyNumber(m_sections.At(applies.front()).key))};
    return Key() > 0 ? CustomAttrib_UpdateAttrib(AttributeRef(Key()), attrib)
                     : CustomAttrib_AddAttrib(attrib);
}
