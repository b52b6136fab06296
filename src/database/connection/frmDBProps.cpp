#include "database/connection/frmDBProps.h"

#include "core/files/File_Tools.h"
#include "core/session/Session.h"
#include "database/statements/System.h"
#include "forms/frames/FormBuilder.h"
#include "platform/connection/Connection.h"

namespace
{
bool HoldsPassword(const QString &part)
{
    return part.contains(QStringLiteral("PWD=")) || part.toUpper().contains(QStringLiteral("PASSWORD="));
}

/// A password may contain a semicolon, and what follows it would be shown in a row of its own.
QString TextWithoutPassword()
{
    QString text = gConnection.ConnectionText();
    for (const auto *mark : {"PWD=", "Password="})
        text.replace(QLatin1String(mark) + gDBPassword, QLatin1String(mark), Qt::CaseInsensitive);
    return text;
}

std::vector<ListItem> PropertiesOf(const QString &name)
{
    std::vector<ListItem> rows;
    rows.push_back({QStringLiteral("?0"), u"Connection properties for " % name % u':'});
    for (const QString &part : TextWithoutPassword().split(u';', Qt::SkipEmptyParts)) {
        if (!HoldsPassword(part))
            rows.push_back({u'?' % QString::number(rows.size()), u"    " % part});
    }
    return rows;
}
} // namespace

frmDBProps::frmDBProps(const QString &name, bool nameCanChange, QWidget *parent)
    : FormDialog(QStringLiteral("frmDBProps"), QStringLiteral("Database Properties"), parent)
    , m_nameBefore(name)
{
    m_properties.SetColumns({QStringLiteral("Properties")});
    m_properties.Fill(PropertiesOf(name));

    FormBuilder form(this);
    m_name = form.Text(QStringLiteral("DName"), QStringLiteral("Database &Name:"));
    m_name->setText(name);
    m_name->setEnabled(nameCanChange);
    form.List(QStringLiteral("DBList"), {}, m_properties)->setAccessibleName(QStringLiteral("Properties"));
    form.BeginButtons(FormBuilder::Align::Start);
    QPushButton *open = form.Button(QStringLiteral("OpenBtn"), QStringLiteral("Open &Database"));
    form.Gap();
    QPushButton *ok = form.DefaultButton(QStringLiteral("OKBtn"), QStringLiteral("&OK"));
    form.EndButtons();
    open->setHidden(gDBQType == 2);

    resize(fontMetrics().averageCharWidth() * 80, sizeHint().height());

    connect(open, &QPushButton::clicked, this, [] { OpenDocument(gDBQFilename); });
    connect(ok, &QPushButton::clicked, this, &frmDBProps::reject);
}

bool frmDBProps::MayLeave()
{
    const NumberedValue name{SystemRef::DatabaseName, m_name->text()};
    if (m_name->isEnabled() && name.text != m_nameBefore && !SetSystemValue(name.index, name.text))
        TellNotStored({name}, windowTitle());
    return true;
}
