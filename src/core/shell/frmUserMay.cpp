#include "core/shell/frmUserMay.h"

#include "core/shell/Commands.h"
#include "forms/frames/FormBuilder.h"
#include "forms/frames/OkCancel.h"
#include "platform/desktop/Directories.h"
#include "users/SecurityMap.h"
#include "users/UserRights.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>

#include <algorithm>

namespace
{
QString CommandId(const char *id)
{
    return QString::fromLatin1(id);
}

QString CaptionOf(const QString &id)
{
    const auto commands = Commands();
    const auto found = std::find_if(commands.begin(), commands.end(),
                                    [&](const Command &command) { return id == QLatin1String(command.id); });
    return QString::fromUtf8(found == commands.end() ? OptionsMenu().caption : found->caption);
}

/// A caption as running text.
QString Plain(QString caption)
{
    return caption.remove(u'&').remove(u'…').remove(QStringLiteral("...")).trimmed();
}

bool IsOnToolBar(const QString &id)
{
    const auto bar = ToolBarCommands();
    return std::any_of(bar.begin(), bar.end(), [&](const char *tool) { return id == QLatin1String(tool); });
}

void FillMenu(QMenu &menu, const CommandMenu &content, const QStringList &closed)
{
    menu.menuAction()->setEnabled(!closed.contains(CommandId(content.id)));
    for (const char *entry : content.entries) {
        const QString id = CommandId(entry);
        if (id.isEmpty())
            menu.addSeparator();
        else if (id == QLatin1String(OptionsMenu().id))
            FillMenu(*menu.addMenu(QString::fromUtf8(OptionsMenu().caption)), OptionsMenu(), closed);
        else
            menu.addAction(CaptionOf(id))->setEnabled(!closed.contains(id));
    }
}
} // namespace

frmUserMay::frmUserMay(const QString &user, const QString &rights, QWidget *parent)
    : FormDialog(QStringLiteral("frmUserMay"), QStringLiteral("What This User May Do"), parent)
    , m_closed(ToolsClosedTo(rights))
{
    m_rows.SetColumns({QStringLiteral("Where"), QStringLiteral("What"), QStringLiteral("This user")});
    ListCommands();
    ListRights(rights);

    FormBuilder form(this);
    form.Line(QStringLiteral("Notice"),
              (user.isEmpty() ? QStringLiteral("The new user") : user) %
                  u" sees these menus. They open so that you can look at them; their commands do nothing "
                  u"here.");
    form.Place(Menus(), QStringLiteral("UserMenus"));
    ListView *list = form.List(QStringLiteral("MayList"), QStringLiteral("&Commands and rights:"), m_rows);
    list->SetColumnChars({26, 46, 20});
    form.BeginButtons();
    QPushButton *close = form.DefaultButton(QStringLiteral("ExitBtn"), QStringLiteral("E&xit"));
    form.EndButtons();
    connect(close, &QPushButton::clicked, this, &frmUserMay::reject);
    resize(fontMetrics().averageCharWidth() * 100, fontMetrics().lineSpacing() * 34);
}

QMenuBar *frmUserMay::Menus()
{
    auto *bar = new QMenuBar(this);
    bar->setNativeMenuBar(false);
    for (const CommandMenu &content : CommandMenus())
        FillMenu(*bar->addMenu(QString::fromUtf8(content.caption)), content, m_closed);
    return bar;
}

void frmUserMay::ListCommands()
{
    for (const CommandMenu &menu : CommandMenus()) {
        for (const char *entry : menu.entries) {
            if (entry[0])
                AddRow(Plain(QString::fromUtf8(menu.caption)), Plain(CaptionOf(CommandId(entry))),
                       HowFar(menu.id, CommandId(entry)));
        }
    }
    for (const char *entry : OptionsMenu().entries)
        AddRow(Plain(QString::fromUtf8(OptionsMenu().caption)), Plain(CaptionOf(CommandId(entry))),
               HowFar(OptionsMenu().id, CommandId(entry)));
}

/// The tool bar leads past a menu that is closed.
QString frmUserMay::HowFar(const char *menu, const QString &command) const
{
    if (m_closed.contains(command))
        return QStringLiteral("Closed");
    if (!m_closed.contains(CommandId(menu)))
        return QStringLiteral("Open");
    return IsOnToolBar(command) ? QStringLiteral("Open from the tool bar") : QStringLiteral("Closed");
}

void frmUserMay::ListRights(const QString &rights)
{
    UserRights user;
    user.Load(rights);
    QString heading;
    for (const SecurityMapEntry &entry :
         ReadSecurityMap(Directories::SystemFile(QStringLiteral("secmap.dat")), QStringLiteral("english"))) {
        if (entry.kind == RightKind::Heading)
            heading = entry.text;
        if (entry.position < 0)
            continue;
        const QString level = RightLevelText(entry.kind, user.Digit(entry.position));
        AddRow(heading, entry.text, level.isEmpty() ? QStringLiteral("No Access") : level);
    }
}

void frmUserMay::AddRow(const QString &where, const QString &what, const QString &howFar)
{
    ListItem row{u'?' % QString::number(m_rows.Count()), where};
    row.subItems = {what, howFar};
    m_rows.Add(std::move(row));
}
