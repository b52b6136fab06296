#include "attributes/frmAddAttribute.h"

#include "attributes/CustomAttribModule.h"
#include "core/Session.h"
#include "database/GlobalCode.h"
#include "forms/FormBuilder.h"

namespace
{
constexpr int nameLength = 255; // of the column
}

frmAddAttribute::frmAddAttribute(QWidget *parent)
    : FormDialog(QStringLiteral("frmAddAttribute"), QStringLiteral("Add Attribute"), parent)
{
    FormBuilder form(this);
    BuildFields(form);
    form.BeginButtons();
    m_addBtn = form.DefaultButton(QStringLiteral("AddBtn"), QStringLiteral("&Add"));
    QPushButton *exit = form.Button(QStringLiteral("CanBtn"), QStringLiteral("E&xit"));
    form.EndButtons();

    std::vector<ListItem> sections;
    for (const AttribSectionInfo &section : AttribSections())
        sections.push_back({u'?' % SqlNumber(section.code), section.caption});
    m_sections.Fill(std::move(sections));
    m_sections.SelectFirst();
    m_multi->setChecked(true);
    m_modified = new ModifiedMark(m_addBtn, this);
    m_modified->Watch(this);
    connect(m_addBtn, &QPushButton::clicked, this, &frmAddAttribute::Save);
    connect(exit, &QPushButton::clicked, this, &frmAddAttribute::reject);
    m_attribName->setFocus();
}

void frmAddAttribute::BuildFields(FormBuilder &form)
{
    m_warn = form.Line(QStringLiteral("Warn"),
                       QStringLiteral("This attribute cannot be read. Another user may have deleted it."));
    m_warn->hide();
    m_attribName = form.Text(QStringLiteral("AttribName"), QStringLiteral("&Name:"), nameLength);
    m_attribName->setMinimumWidth(30 * fontMetrics().averageCharWidth());
    m_required.Add(form.Label(), m_attribName);
    auto *applyList = new ListView(m_sections);
    applyList->setMaximumHeight(5 * fontMetrics().lineSpacing());
    form.Place(applyList, QStringLiteral("ApplyList"), QStringLiteral("Applies &to:"), true);
    form.BeginGroup(QStringLiteral("Selection"));
    m_multi = form.Option(QStringLiteral("SelectOpt_0"), QStringLiteral("&Multi-Select Attribute"));
    m_multi->setToolTip(QStringLiteral("A record can have any number of its values"));
    m_single = form.Option(QStringLiteral("SelectOpt_1"), QStringLiteral("&Single Select Attribute"));
    m_single->setToolTip(QStringLiteral("A record can have one of its values at most"));
    form.EndGroup();
}

void frmAddAttribute::EditAttrib(int key)
{
    setWindowTitle(QStringLiteral("Update Attribute"));
    m_addBtn->setText(QStringLiteral("&Update"));
    m_gone = true;
    ADO_CustomAttrib_ShowAttrib(*this, key);
    m_warn->setVisible(m_gone);
    m_addBtn->setEnabled(!m_gone);
    m_modified->Clear();
}

void frmAddAttribute::ShowAttrib(int key, const CustomAttrib &attrib)
{
    m_key = key;
    m_gone = false;
    m_attribName->setText(attrib.name);
    m_sections.ClearSelection();
    if (const int row = m_sections.Find(u'?' % SqlNumber(attrib.appliesTo)); row >= 0)
        m_sections.SelectOnly(row);
    (attrib.type == AttribType::Single ? m_single : m_multi)->setChecked(true);
}

bool frmAddAttribute::MayLeave()
{
    return m_modified->AskToSave([this] { Save(); });
}

void frmAddAttribute::Save()
{
    if (m_gone || !m_required.Complete())
        return;
    const std::vector<int> applies = m_sections.SelectedRows();
    if (applies.empty()) {
        Dialogs::MsgBox(QStringLiteral("Attribute must apply to at least one section."),
                        QStringLiteral("Form not complete"));
        return;
    }
    const CustomAttrib attrib{m_attribName->text(),
                              m_single->isChecked() ? AttribType::Single : AttribType::Multi,
                              KeyNumber(m_sections.At(applies.front()).key)};
    const int key = m_key > 0 ? CustomAttrib_UpdateAttrib(m_key, attrib) : CustomAttrib_AddAttrib(attrib);
    if (key < 1)
        return;
    m_modified->Clear();
    gDialogResult = key;
    accept();
}
