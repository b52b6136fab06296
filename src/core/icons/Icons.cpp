#include "core/icons/Icons.h"

#include "core/icons/ThemedSvgEngine.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QMimeDatabase>

#include <algorithm>

static void LoadPictures()
{
    // The pictures are in a static library, whose resources are not registered automatically.
    Q_INIT_RESOURCE(icons);
}

namespace
{
QStringList ShippedNames()
{
    QStringList names = QDir(QStringLiteral(":/icons/breeze/22")).entryList(QDir::Files);
    for (QString &name : names)
        name.chop(4);
    return names;
}

/// True if the desktop's theme has every icon. False for Breeze itself, because the shipped drawings are the
/// same and follow the palette.
bool ThemeServes()
{
    const QString theme = QIcon::themeName();
    if (theme.isEmpty() || theme == u"hicolor" || theme.startsWith(u"breeze"))
        return false;
    const QStringList names = ShippedNames();
    return std::all_of(names.begin(), names.end(),
                       [](const QString &name) { return QIcon::hasThemeIcon(name); });
}

QIcon Shipped(const QString &name)
{
    QIcon icon(new ThemedSvgEngine(name));
    return icon.isNull() ? QIcon() : icon;
}

/// The names that the icon of a file type may have, the best first; none for an unknown type.
QStringList FileTypeNames(const QString &extension)
{
    static const QHash<QString, QString> fixedNames{
        {QStringLiteral("FOLDER"), QStringLiteral("folder")},
        {QStringLiteral(".URL"), QStringLiteral("internet-services")},
        {QStringLiteral(".HTM"), QStringLiteral("text-html")},
        {QStringLiteral(".EXE"), QStringLiteral("application-x-executable")}};
    if (const auto fixed = fixedNames.constFind(extension.toUpper()); fixed != fixedNames.constEnd())
        return {*fixed};
    const QMimeType type =
        QMimeDatabase().mimeTypeForFile(u"x" % extension.toLower(), QMimeDatabase::MatchExtension);
    return type.isDefault() ? QStringList() : QStringList{type.iconName(), type.genericIconName()};
}
} // namespace

QIcon Icons::Of(const QString &name)
{
    static const bool themeServes = [] {
        LoadPictures();
        return ThemeServes();
    }();
    static QHash<QString, QIcon> known;
    const auto found = known.constFind(name);
    if (found != known.constEnd())
        return *found;
    QIcon icon = themeServes ? QIcon::fromTheme(name) : Shipped(name);
    known.insert(name, icon);
    return icon;
}

QIcon Icons::OfFileType(const QString &extension, const QString &otherwise)
{
    for (const QString &name : FileTypeNames(extension) + FileTypeNames(otherwise)) {
        QIcon icon = Of(name);
        if (!icon.isNull())
            return icon;
    }
    return Of(QStringLiteral("unknown"));
}

QIcon Icons::Application()
{
    LoadPictures();
    static const QIcon icon(QStringLiteral(":/icons/veltrane.svg"));
    return icon;
}
