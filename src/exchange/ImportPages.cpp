#include "exchange/ImportPages.h"

#include "exchange/ImportState.h"
#include "exchange/frmChangeMap.h"
#include "forms/FormBuilder.h"
#include "platform/Dialogs.h"

#include <QFileInfo>
#include <QStandardPaths>

ImportDataPage::ImportDataPage(QWidget *page, ImportState &state)
    : QObject(page)
{
    FormBuilder form(page);
    form.Combo(QStringLiteral("ImportTypes"), QStringLiteral("File &type:"), state.ImportTypes);
    m_list = form.List(QStringLiteral("ImportList"), QStringLiteral("&Importing Data to:"), state.ImportList);
    m_list->SetEmptyText(QStringLiteral("The map of import fields (csvmap.dat) offers nothing."));
    connect(m_list, &ListView::Opened, this, &ImportDataPage::Chosen);
}

void ImportDataPage::Enter()
{
    m_list->setFocus();
}

ImportFilePage::ImportFilePage(QWidget *page)
    : QObject(page)
{
    FormBuilder form(page);
    form.Line(QStringLiteral("FileHint"), QStringLiteral("The first line of the file names its fields.\n"
                                                         "Dates are read as DD/MM/YYYY or YYYY-MM-DD."));
    Filename = form.Text(QStringLiteral("Filename"), QStringLiteral("Te&xt file:"));
    form.Beside();
    QPushButton *browse = form.Button(QStringLiteral("BrowseBtn"), QStringLiteral("B&rowse ..."));
    form.Stretch();
    connect(browse, &QPushButton::clicked, this, &ImportFilePage::Browse);
    connect(Filename, &QLineEdit::textChanged, this, &ImportFilePage::Changed);
}

void ImportFilePage::Enter()
{
    Filename->setFocus();
}

QString ImportFilePage::FileName() const
{
    return Filename->text().trimmed();
}

void ImportFilePage::Browse()
{
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    const QString folder = FileName().isEmpty() ? documents : QFileInfo(FileName()).path();
    const QString file = Dialogs::OpenFile(
        {QStringLiteral("Open"), folder, QString(),
         QStringLiteral("Comma Separated Values (*.csv);;Text Files (*.txt);;All Files (*.*)"),
         QStringLiteral("csv")});
    if (!file.isEmpty())
        Filename->setText(file);
}

ImportMapPage::ImportMapPage(QWidget *page, ImportState &state)
    : QObject(page)
    , m_state(state)
{
    FormBuilder form(page);
    ImportSel = form.List(QStringLiteral("ImportSel"), QStringLiteral("Fiel&ds to import:"), state.ImportSel);
    ImportSel->SetColumnChars({28, 28});
    ImportSel->setMinimumSize(ImportSel->fontMetrics().averageCharWidth() * 68,
                              ImportSel->fontMetrics().height() * 16);
    form.BeginButtons();
    MapBtn = form.Button(QStringLiteral("MapBtn"), QStringLiteral("&Change Field Mapping..."));
    form.EndButtons();
    connect(MapBtn, &QPushButton::clicked, this, &ImportMapPage::ChangeMap);
    connect(ImportSel, &ListView::Opened, this, &ImportMapPage::ChangeMap);
}

void ImportMapPage::Enter()
{
    MapBtn->setEnabled(!m_state.ImportSel.IsEmpty());
    ImportSel->setFocus();
}

void ImportMapPage::ChangeMap()
{
    const int row = m_state.ImportSel.CurrentRow();
    if (row < 0)
        return;
    frmChangeMap form(m_state, row, ImportSel->window());
    if (form.exec() == QDialog::Accepted)
        m_state.SetTarget(row, form.Target());
}
