#include "forms/frames/SectionsDialog.h"

#include "forms/frames/FormBuilder.h"

SectionsDialog::SectionsDialog(const QString &name, const QString &title, QWidget *parent)
    : FormDialog(name, title, parent)
{
    m_sections.SetColumns({QStringLiteral("Section")});
    FormBuilder form(this);
    form.BeginColumns(2);
    m_sectionList = form.List(QStringLiteral("SecList"), {}, m_sections);
    m_sectionList->setAccessibleName(QStringLiteral("Sections"));
    form.NextColumn(5);
    m_list = form.List(QStringLiteral("MainList"), {}, m_items, ListView::Choice::Multi);
    m_list->setAccessibleName(QStringLiteral("Items of the section"));
    m_list->SetEmptyText(QStringLiteral("Nothing in this section yet."));
    form.EndColumns();
    m_buttons.emplace(form, m_list);

    connect(m_buttons->add, &QPushButton::clicked, this, [this] { AddItem(); });
    connect(m_buttons->edit, &QPushButton::clicked, this, [this] { EditItem(); });
    connect(m_buttons->del, &QPushButton::clicked, this, [this] { DeleteItems(); });
    connect(m_buttons->refresh, &QPushButton::clicked, this, &SectionsDialog::Refresh);
    connect(m_buttons->exit, &QPushButton::clicked, this, &SectionsDialog::reject);
    connect(m_sectionList, &ListView::Opened, this, [this] { m_list->setFocus(); });
    connect(m_items.Selection(), &QItemSelectionModel::selectionChanged, this, &SectionsDialog::OnSelection);
    resize(fontMetrics().averageCharWidth() * 96, fontMetrics().lineSpacing() * 28);
}

void SectionsDialog::ShowSections(const QList<std::pair<int, QString>> &sections)
{
    for (const auto &[number, caption] : sections)
        m_sections.Add({u'?' % QString::number(number), caption});
    connect(m_sections.Selection(), &QItemSelectionModel::selectionChanged, this,
            &SectionsDialog::ShowSection);
    m_sections.SelectFirst();
}

int SectionsDialog::SectionNumber() const
{
    return KeyNumber(m_sections.At(qMax(0, m_sections.CurrentRow())).key);
}

void SectionsDialog::OnSelection()
{
    ApplyRights(m_items.Selection()->hasSelection());
}

void SectionsDialog::ShowSection()
{
    FillItems();
    m_list->KeepOrder();
    OnSelection();
}

void SectionsDialog::Refresh()
{
    const QStringList chosen = m_items.SelectedKeys();
    ShowSection();
    // A row that was just added may have another mark before its reference than one that was read.
    for (const QString &key : m_items.Keys()) {
        if (!chosen.isEmpty() && key.mid(1) == chosen.first().mid(1))
            return SelectKey(key);
    }
}

void SectionsDialog::SelectKey(const QString &key)
{
    const int row = m_items.Find(key);
    if (row < 0)
        return;
    m_items.SelectOnly(row);
    m_list->ShowRow(row);
}

void SectionsDialog::AddRow(const QString &key, const QString &text)
{
    m_items.Add({key, text});
    m_items.sort(0, Qt::AscendingOrder);
    m_list->KeepOrder();
    SelectKey(key);
}
