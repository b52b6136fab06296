#include "exchange/csv/CsvPages.h"

#include "forms/frames/FormBuilder.h"
#include "platform/desktop/Dialogs.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace
{
QString DocumentFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
}
} // namespace

DataSetPage::DataSetPage(QWidget *page, const Names &names, ComboModel &types, ListModel &sets)
    : QObject(page)
{
    FormBuilder form(page);
    form.Combo(names.types, QStringLiteral("File &type:"), types);
    m_list = form.List(names.list, names.listCaption, sets);
    m_list->SetEmptyText(names.empty);
    connect(m_list, &ListView::Opened, this, &DataSetPage::Chosen);
}

void DataSetPage::Enter()
{
    m_list->setFocus();
}

FilePage::FilePage(QWidget *page, Purpose purpose, const QString &caption, const QString &hint)
    : QObject(page)
    , m_purpose(purpose)
{
    FormBuilder form(page);
    form.Line(QStringLiteral("FileHint"), hint);
    Filename = form.Text(QStringLiteral("Filename"), caption);
    form.Beside();
    QPushButton *browse = form.Button(QStringLiteral("BrowseBtn"), QStringLiteral("B&rowse ..."));
    form.Stretch();
    connect(browse, &QPushButton::clicked, this, &FilePage::Browse);
    connect(Filename, &QLineEdit::textChanged, this, &FilePage::Changed);
}

void FilePage::Enter()
{
    Filename->setFocus();
}

/// A name without a folder means a file in the folder that Browse starts in.
QString FilePage::FileName() const
{
    const QString name = Filename->text().trimmed();
    return name.isEmpty() || QFileInfo(name).isAbsolute() ? name : QDir(DocumentFolder()).filePath(name);
}

void FilePage::SetFileName(const QString &file)
{
    Filename->setText(file);
}

void FilePage::Browse()
{
    const bool opens = m_purpose == Purpose::Open;
    const QFileInfo named(FileName());
    const Dialogs::FileQuestion question{
        opens ? QStringLiteral("Open") : QStringLiteral("Save As"),
        FileName().isEmpty() ? DocumentFolder() : named.path(), opens ? QString() : m_proposed,
        QStringLiteral("Comma Separated Values (*.csv);;Text Files (*.txt);;All Files (*.*)"),
        QStringLiteral("csv")};
    const QString file = opens ? Dialogs::OpenFile(question) : Dialogs::SaveFile(question);
    if (!file.isEmpty())
        SetFileName(file);
}
