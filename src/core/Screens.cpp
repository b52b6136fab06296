#include "core/Screens.h"

#include "core/frmAbout.h"
#include "core/frmLocalOptions.h"
#include "courses/frmCourse.h"
#include "database/frmDBOptions.h"
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

const QHash<QString, Screen> &Standing()
{
    static const QHash<QString, Screen> screens{
        {QStringLiteral("ID_About"), Modal<frmAbout>()},
        {QStringLiteral("ID_CourseManager"), Child<frmCourse>()},
        {QStringLiteral("ID_CourseReports"), Modal<frmCourseWiz>()},
        {QStringLiteral("ID_DatabaseOptions"), Modal<frmDBOptions>()},
        {QStringLiteral("ID_LocalOptions"), Modal<frmLocalOptions>()},
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
    Dialogs::Hooks &hooks = Dialogs::Installed();
    hooks.selectCourses = frmPercent::Choose;
}
