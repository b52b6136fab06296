#include "exchange/import/frmChangeMap.h"

#include "exchange/import/ImportState.h"
#include "forms/frames/FormBuilder.h"

frmChangeMap::frmChangeMap(const ImportState &state, int row, QWidget *parent)
    : FormDialog(QStringLiteral("frmChangeMap"), QStringLiteral("Change Mapping"), parent)
    , m_state(state)
{
    m_fields.SetColumns({QStringLiteral("Veltrane Field"), QStringLiteral("Now taken from")});
    std::vector<ListItem> items;
    for (const TreeNode *target : state.ImportKey.Nodes()) {
        QString from;
        for (int other = 0; other < state.ImportSel.Count(); ++other) {
            if (state.TargetOf(other) == target)
                from = state.ImportSel.At(other).text;
        }
        items.push_back({.key = target->key, .text = target->text, .subItems = {from}, .bold = target->bold});
    }
    m_fields.Fill(std::move(items));

    FormBuilder form(this);
    form.Line(QStringLiteral("FieldName"), u"Text field: " % state.ImportSel.At(row).text);
    FieldList = form.List(QStringLiteral("FieldList"), QStringLiteral("&Veltrane field:"), m_fields);
    FieldList->SetColumnChars({26, 20});
    FieldList->setMinimumSize(FieldList->fontMetrics().averageCharWidth() * 56,
                              FieldList->fontMetrics().height() * 16);
    ImportField = form.Check(QStringLiteral("ImportField"), QStringLiteral("&Import this field"));
    form.BeginButtons();
    ExitBtn = form.DefaultButton(QStringLiteral("ExitBtn"), QStringLiteral("&OK"));
    QPushButton *cancel = form.Button(QStringLiteral("CanBtn"), QStringLiteral("&Cancel"));
    form.EndButtons();

    const TreeNode *target = state.TargetOf(row);
    ImportField->setChecked(target && state.ImportSel.At(row).checked);
    if (target)
        m_fields.SelectOnly(m_fields.Find(target->key));
    FieldList->setFocus();
    ShowState();

    // A user who picks a target wants the field imported.
    connect(m_fields.Selection(), &QItemSelectionModel::selectionChanged, this,
            [this] { ImportField->setChecked(true); });
    connect(m_fields.Selection(), &QItemSelectionModel::selectionChanged, this, &frmChangeMap::ShowState);
    connect(ImportField, &QCheckBox::toggled, this, &frmChangeMap::ShowState);
    connect(FieldList, &ListView::Opened, this, &QDialog::accept);
    connect(ExitBtn, &QPushButton::clicked, this, &QDialog::accept);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
}

void frmChangeMap::ShowState()
{
    ExitBtn->setEnabled(!ImportField->isChecked() || !m_fields.SelectedRows().empty());
}

const TreeNode *frmChangeMap::Target() const
{
    const QStringList chosen = m_fields.SelectedKeys();
    return ImportField->isChecked() && !chosen.isEmpty() ? m_state.ImportKey.Find(chosen.first()) : nullptr;
}
