#include "database/connection/frmRegisterDB.h"

#include "database/connection/DatabaseFile.h"
#include "database/connection/Registry.h"
#include "forms/fields/FieldFocus.h"
#include "forms/frames/AskingWindow.h"
#include "forms/frames/FormBuilder.h"
#include "forms/frames/OkCancel.h"
#include "platform/desktop/Dialogs.h"

#include <QFileInfo>

#include <algorithm>

namespace
{
const QString invalidCharacters = QStringLiteral("=()*!{}[];@,?\\");

bool IsValidName(const QString &source)
{
    return std::none_of(source.begin(), source.end(),
                        [](QChar character) { return invalidCharacters.contains(character); });
}
} // namespace

frmRegisterDB::frmRegisterDB(QWidget *parent)
    : FormDialog(QStringLiteral("frmRegisterDB"), QStringLiteral("Register Existing Veltrane Database"),
                 parent)
{
    QPushButton *select = nullptr;
    QPushButton *ok = nullptr;
    {
        FormBuilder form(this);
        m_source = form.Text(QStringLiteral("DSN"), QStringLiteral("Data Source &Name:"));
        m_required.Add(form.Label(), m_source);
        m_description = form.Text(QStringLiteral("Description"), QStringLiteral("&Description:"));
        m_file = form.Text(QStringLiteral("DatabasePath"), QStringLiteral("Database &Location:"));
        m_required.Add(form.Label(), m_file);
        ShowWholePath(m_file);
        form.Beside();
        select = form.Button(QStringLiteral("SelectBtn"), QStringLiteral("&Select..."));
        ok = OkCancel::Add(form, this).ok;
    }
    resize(fontMetrics().averageCharWidth() * 90, sizeHint().height());
    m_modified = new ModifiedMark(ok, this);
    m_modified->Watch(this);

    connect(select, &QPushButton::clicked, this, [this] { ChooseDatabaseFile(m_file); });
    connect(ok, &QPushButton::clicked, this, &frmRegisterDB::Register);
}

void frmRegisterDB::Propose(const QString &source, const QString &description, const QString &file)
{
    frmRegisterDB form(AskingWindow());
    form.m_source->setText(source);
    form.m_description->setText(description);
    form.m_file->setText(file);
    form.exec();
}

bool frmRegisterDB::MayLeave()
{
    return m_modified->AskToSave([this] { Register(); });
}

void frmRegisterDB::Register()
{
    const QString source = m_source->text();
    if (!m_required.Complete())
        return;
    if (!QFileInfo(m_file->text()).isFile()) {
        Dialogs::Tell(QStringLiteral("Database not found!"), QStringLiteral("Database not found"),
                      Dialogs::Icon::Exclamation);
        FocusField(m_file);
        return;
    }
    if (!IsValidName(source)) {
        Dialogs::Tell(u"Invalid character for the Database Source Name.\nInvalid characters are " %
                          invalidCharacters,
                      QStringLiteral("Invalid DSN"), Dialogs::Icon::Exclamation);
        FocusField(m_source);
        return;
    }
    if (!DSNMissing(source)) {
        Dialogs::Tell(QStringLiteral("Data Source Name already in use."), QStringLiteral("Invalid DSN"),
                      Dialogs::Icon::Exclamation);
        FocusField(m_source);
        return;
    }
    if (!RegisterAccessDSN(source, QFileInfo(m_file->text()).absoluteFilePath(), m_description->text(), {},
                           {}))
        return;
    m_modified->Clear();
    Dialogs::Tell(QStringLiteral("Successfully created and registered Database."), QStringLiteral("ODBC-32"),
                  Dialogs::Icon::Information);
    accept();
}
