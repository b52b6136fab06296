#include "support/RightsTable.h"

#include "core/session/Session.h"
#include "database/statements/Security.h"

#include <QTest>
#include <QVariant>

namespace
{
bool IsLeft(const QWidget &screen, const QWidget &control, Left left)
{
    const bool locked = control.property("readOnly").toBool() || !control.isEnabled();
    switch (left) {
    case Left::Enabled:
        return control.isEnabled() && control.isVisibleTo(&screen);
    case Left::Disabled:
        return !control.isEnabled();
    case Left::Hidden:
        return !control.isVisibleTo(&screen);
    case Left::Locked:
        return locked;
    case Left::Editable:
        return !locked && control.isVisibleTo(&screen);
    }
    return false;
}

const char *NameOf(Left left)
{
    static constexpr const char *names[] = {"enabled", "disabled", "hidden", "locked", "editable"};
    return names[static_cast<int>(left)];
}
} // namespace

QString RightsWith(int right, int level)
{
    QString rights = RightsBlank();
    rights[right] = QChar(u'0' + level);
    return rights;
}

void CheckRights(const std::function<std::unique_ptr<QWidget>()> &open, const std::vector<RightsRow> &table)
{
    for (const RightsRow &row : table) {
        gUserRights = RightsWith(row.right, row.level);
        const std::unique_ptr<QWidget> screen = open();
        const auto *control = screen->findChild<QWidget *>(QString::fromLatin1(row.control));
        if (control && IsLeft(*screen, *control, row.left))
            continue;
        const QString message = screen->objectName() % u": right " % QString::number(row.right) %
                                u" at level " % QString::number(row.level) % u" should leave " %
                                QString::fromLatin1(row.control) % u' ' %
                                QString::fromLatin1(control ? NameOf(row.left) : "there at all");
        QTest::qFail(qPrintable(message), __FILE__, __LINE__);
    }
    gUserRights = RightsBlank();
}
