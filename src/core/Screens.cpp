#include "core/Screens.h"

#include "attributes/frmCustomAttributes.h"
#include "contacts/frmContact.h"
#include "contacts/frmContactMain.h"
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
#include "exchange/frmExportWiz.h"
#include "exchange/frmImportWiz.h"
#include "organisations/frmAwardBoard.h"
#include "organisations/frmOrganisations.h"
#include "platform/Dialogs.h"
#include "reports/frmContactWiz.h"
#include "reports/frmCourseWiz.h"
#include "users/frmUsers.h"

#include <QHash>

namespace
{
template <typename Form>
Screen Child(const QString &name)
{
    Screen screen;
    screen.childName = name;
    screen.makeChild = []() -> QWidget * { return new Form; };
    if constexpr (requires(Form & form) { form.Form_Refresh(); })
        screen.refreshChild = [](QWidget *child) { static_cast<Form *>(child)->Form_Refresh(); };
    return screen;
}

template <typename Form>
Screen Modal()
{
    Screen screen;
    screen.runModal = [](QWidget *parent) { Form(parent).exec(); };
    return screen;
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
        {QStringLiteral("ID_AwardBoard"), Modal<frmAwardBoard>()},
        {QStringLiteral("ID_ContactMaintenance"), Modal<frmContactMain>()},
        {QStringLiteral("ID_ContactManager"), Child<frmContact>(QStringLiteral("frmContact"))},
        {QStringLiteral("ID_ContactReports"), Modal<frmContactWiz>()},
        {QStringLiteral("ID_CourseManager"), Child<frmCourse>(QStringLiteral("frmCourse"))},
        {QStringLiteral("ID_CourseReports"), Modal<frmCourseWiz>()},
        {QStringLiteral("ID_CustomAttributes"), Modal<frmCustomAttributes>()},
        {QStringLiteral("ID_DBSecurity"), {.runModal = ChangeDatabasePassword}},
        {QStringLiteral("ID_DatabaseOptions"), Modal<frmDBOptions>()},
        {QStringLiteral("ID_Export"), Modal<frmExportWiz>()},
        {QStringLiteral("ID_Import"), Modal<frmImportWiz>()},
        {QStringLiteral("ID_LocalOptions"), Modal<frmLocalOptions>()},
        {QStringLiteral("ID_Organisations"), Modal<frmOrganisations>()},
        {QStringLiteral("ID_RegisterDB"), Modal<frmRegisterDB>()},
        {QStringLiteral("ID_Users"), Child<frmUsers>(QStringLiteral("frmUsers"))},
    };
    return screens;
}
} // namespace

const Screen *Screens::Of(const QString &command)
{
    const auto found = Standing().constFind(command);
    return found == Standing().constEnd() ? nullptr : &*found;
}

const Screen *Screens::OfChild(const QString &name)
{
    for (const Screen &screen : Standing()) {
        if (screen.makeChild && screen.childName == name)
            return &screen;
    }
    return nullptr;
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
