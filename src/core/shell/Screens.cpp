#include "core/shell/Screens.h"

#include "attributes/frmCustomAttributes.h"
#include "contacts/maintenance/frmContactMain.h"
#include "contacts/manager/frmContact.h"
#include "contacts/manager/frmQuickFilter.h"
#include "contacts/manager/frmSelectContacts.h"
#include "core/shell/Main.h"
#include "core/shell/frmAbout.h"
#include "core/shell/frmLocalOptions.h"
#include "core/shell/frmUserMay.h"
#include "courses/maintenance/frmCourseMain.h"
#include "courses/manager/frmCourse.h"
#include "courses/schedule/frmSchedule.h"
#include "database/connection/frmDBLogon.h"
#include "database/connection/frmDBOptions.h"
#include "database/connection/frmDBPass.h"
#include "database/connection/frmDBProps.h"
#include "database/connection/frmODBCLogon.h"
#include "database/connection/frmRegisterDB.h"
#include "enrolment/frmPercent.h"
#include "exchange/export/frmExportWiz.h"
#include "exchange/import/frmImportWiz.h"
#include "forms/frames/OtherScreens.h"
#include "organisations/record/frmAddOrg.h"
#include "organisations/record/frmAwardBoard.h"
#include "organisations/record/frmOrganisations.h"
#include "platform/desktop/Dialogs.h"
#include "reports/contacts/frmContactWiz.h"
#include "reports/courses/frmCourseWiz.h"
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
    if constexpr (requires(Form & form) { form.Refresh(); })
        screen.relistChild = [](QWidget *child) { static_cast<Form *>(child)->Refresh(); };
    return screen;
}

template <typename Form>
Screen Modal()
{
    Screen screen;
    screen.runModal = [](QWidget *parent) { Form(parent).exec(); };
    return screen;
}

template <typename Form>
Screen ModalThatChangesLists()
{
    Screen screen = Modal<Form>();
    screen.changesLists = true;
    return screen;
}

/// Ends the session if the database cannot be opened again with its new password.
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
        {QStringLiteral("ID_CourseMaintenance"), Modal<frmCourseMain>()},
        {QStringLiteral("ID_CourseManager"), Child<frmCourse>(QStringLiteral("frmCourse"))},
        {QStringLiteral("ID_CourseReports"), Modal<frmCourseWiz>()},
        {QStringLiteral("ID_CustomAttributes"), Modal<frmCustomAttributes>()},
        {QStringLiteral("ID_DBSecurity"), {.runModal = ChangeDatabasePassword}},
        {QStringLiteral("ID_DatabaseOptions"), Modal<frmDBOptions>()},
        {QStringLiteral("ID_Export"), Modal<frmExportWiz>()},
        {QStringLiteral("ID_Import"), ModalThatChangesLists<frmImportWiz>()},
        {QStringLiteral("ID_LocalOptions"), Modal<frmLocalOptions>()},
        {QStringLiteral("ID_Organisations"), Modal<frmOrganisations>()},
        {QStringLiteral("ID_QuickFilter"), ModalThatChangesLists<frmQuickFilter>()},
        {QStringLiteral("ID_RegisterDB"), Modal<frmRegisterDB>()},
        {QStringLiteral("ID_ScheduleManager"), Child<frmSchedule>(QStringLiteral("frmSchedule"))},
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
    Installed().chooseDatabase = [](QWidget *parent, const QString &proposed) {
        frmODBCLogon(proposed, parent).exec();
    };
    Installed().showProperties = [](QWidget *parent, const QString &name, bool nameCanChange) {
        frmDBProps(name, nameCanChange, parent).exec();
    };
    Installed().importFile = [](QWidget *parent, const QString &file) {
        frmImportWiz form(parent);
        form.ChooseFile(file);
        form.exec();
    };
    Dialogs::Hooks &hooks = Dialogs::Installed();
    hooks.databaseLogon = frmDBLogon::Ask;
    hooks.registerDatabase = frmRegisterDB::Propose;
    hooks.selectCourses = frmPercent::Choose;
    InstallOpeners();
}

void Screens::InstallOpeners()
{
    OtherScreens::Openers &openers = OtherScreens::Installed();
    openers.organisations = [](const QStringList &keys, QWidget *parent) {
        frmAddOrg::EditRecords(keys, true, parent);
    };
    openers.pickPeople = [](ListModel &people, QWidget *parent) {
        frmSelectContacts form(parent);
        form.Configure(frmSelectContacts::Mode::AddToList, people);
        form.Run();
    };
    openers.contactReports = [](bool arePeopleSelected, QWidget *parent) {
        using Opener = frmContactWiz::Opener;
        frmContactWiz(parent, arePeopleSelected ? Opener::PeopleSelected : Opener::NothingSelected).exec();
    };
    openers.whatUserMayDo = [](const QString &user, const QString &rights, QWidget *parent) {
        frmUserMay(user, rights, parent).exec();
    };
    openers.courseReports = [](QWidget *parent) { frmCourseWiz(parent).exec(); };
}
