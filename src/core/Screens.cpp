#include "core/Screens.h"

#include "core/Main.h"
#include "core/frmAbout.h"
#include "core/frmLocalOptions.h"
#include "courses/frmCourse.h"
#include "database/frmDBLogon.h"
#include "database/frmDBOptions.h"
#include "database/frmDBPass.h"
#include "database/frmDBProps.h"
#include "database/frmODBCLogon.h"
#include "database/frmRegisterDB.h"
#include "enrolment/frmPercent.h"
#include "platform/Dialogs.h"
#include "reports/frmCourseWiz.h"
#include "users/frmUsers.h"

#include <QHash>

namespace
{
template <typename Form>
Screen Child()
{
    return {[]() -> QWidget * { return new Form; }, {}};
}

template <typename Form>
Screen Modal()
{
    return {{}, [](QWidget *parent) { Form(parent).exec(); }};
}

/// A database that cannot be opened again behind its new password ends the session.
void ChangeDatabasePassword(QWidget *parent)
{
    bool isLost = false;
    {
        frmDBPass form(parent);
        QObject::connect(&form, &frmDBPass::DatabaseLost, &form, [&isLost] { isLost = true; });
        form.exec();
    }
    if (isLost)
        Restart();
}

const QHash<QString, Screen> &Standing()
{
    static const QHash<QString, Screen> screens{
        {QStringLiteral("ID_About"), Modal<frmAbout>()},
        {QStringLiteral("ID_CourseManager"), Child<frmCourse>()},
        {QStringLiteral("ID_CourseReports"), Modal<frmCourseWiz>()},
        {QStringLiteral("ID_DBSecurity"), {{}, ChangeDatabasePassword}},
        {QStringLiteral("ID_DatabaseOptions"), Modal<frmDBOptions>()},
        {QStringLiteral("ID_LocalOptions"), Modal<frmLocalOptions>()},
        {QStringLiteral("ID_RegisterDB"), Modal<frmRegisterDB>()},
        {QStringLiteral("ID_Users"), Child<frmUsers>()},
    };
    return screens;
}
} // namespace

const Screen *Screens::Of(const QString &command)
{
    const auto found = Standing().constFind(command);
    return found == Standing().constEnd() ? nullptr : &*found;
}

Screens::Dialogues &Screens::Installed()
{
    static Dialogues dialogues;
    return dialogues;
}

void Screens::Install()
{
    Installed().chooseDatabase = [](QWidget *parent) { frmODBCLogon(parent).exec(); };
    Installed().showProperties = [](QWidget *parent, const QString &name, bool nameCanChange) {
        frmDBProps(name, nameCanChange, parent).exec();
    };
    Dialogs::Hooks &hooks = Dialogs::Installed();
    hooks.databaseLogon = frmDBLogon::Ask;
    hooks.registerDatabase = frmRegisterDB::Propose;
    hooks.selectCourses = frmPercent::Choose;
}
