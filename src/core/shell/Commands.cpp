#include "core/shell/Commands.h"

#include "database/statements/Security.h"

namespace
{
/// A right, and the tool that is disabled at any level below Full.
struct CommandRight {
    Right right;
    const char *id;
};

constexpr Command commands[] = {
    {"ID_New", "&New Access Database", "document-new", "New Veltrane Database", "Ctrl+Shift+N"},
    {"ID_RegisterDB", "&Register Veltrane Database (Access)…", "insert-link"},
    {"ID_SwitchDatabase", "&Switch Database", "network-server-database",
     "Change to a different Veltrane ODBC Database", "Ctrl+O"},
    {"ID_LogOff", "&Log Off", "system-log-out", "Log Off"},
    {"ID_TestDB", "&Update Database", "view-refresh", "Test Database"},
    {"ID_Properties", "&Properties…", "document-properties", "Database Properties"},
    {"ID_Import", "&Import Data", "document-import"},
    {"ID_Export", "&Export Data", "document-export"},
    {"ID_Exit", "E&xit ...", "application-exit", "Quit Program", "Ctrl+Q"},
    {"ID_Users", "&Users", "system-users", "Security/Users"},
    {"ID_DBSecurity", "Database Password…", "object-locked", "Set Database Password"},
    {"ID_ContactManager", "&Contact Manager", "view-pim-contacts", "Contact Manager"},
    {"ID_QuickFilter", "&Quick Filter…", "edit-find",
     "Find a person by any part of name, telephone, e-mail or postcode", "Ctrl+Shift+F"},
    {"ID_FastEnroll", "&Fast Enrol Screen…", "meeting-attending", "Fast Enroll Screen"},
    {"ID_ContactReports", "&Reports", "office-report"},
    {"ID_ContactMaintenance", "Contact &Maintenance", "view-form"},
    {"ID_CourseManager", "&Course Manager", "view-presentation", "Course Manager"},
    {"ID_CourseReports", "&Reports", "view-statistics"},
    {"ID_CourseMaintenance", "Course &Maintenance", "view-form"},
    {"ID_AwardBoard", "Create Award Boards…", "draw-star"},
    {"ID_CustomAttributes", "&Custom Attributes", "tag"},
    {"ID_CreditCardPayments", "Credit Card &Payments", "view-financial-account-credit-card"},
    {"ID_IssueAwards", "Issue &Awards", "view-certificate"},
    {"ID_Organisations", "O&rganisations", "view-institution"},
    {"ID_ReportManager", "&Document Manager", "x-office-document", "Report Manager"},
    {"ID_ScheduleManager", "C&alendar", "view-calendar", "Schedule Manager"},
    {"ID_DatabaseOptions", "&Database Options", "server-database"},
    {"ID_LocalOptions", "&Local Options", "configure"},
    {"ID_Tile", "&Tile", "view-split-left-right", "Tile Windows"},
    {"ID_Cascade", "&Cascade", "window-duplicate", "Cascade Window"},
    {"ID_ArrangeIcons", "&Arrange Icons", "view-list-icons", "Arrange Icons"},
    {"ID_OnlineHelp", "&User Guide…", "help-contents", "Online Help", "F1"},
    {"ID_About", "&About Veltrane", "help-about", "About Veltrane"},
    {"ID_Web", "Offical &Website", "internet-services"},
};

constexpr const char *toolBarCommands[] = {
    "ID_ContactManager",
    "ID_CourseManager",
    "ID_ScheduleManager",
    "ID_ReportManager",
    "ID_FastEnroll",
    "",
    "ID_CourseReports",
    "",
    "ID_Import",
    "",
    "ID_SwitchDatabase",
    "ID_LogOff",
    "",
    "ID_Tile",
    "ID_Cascade",
    "",
    "ID_OnlineHelp",
};

constexpr const char *commandsWithoutDatabase[] = {
    "ID_File", "ID_New",     "ID_RegisterDB",   "ID_SwitchDatabase", "ID_LogOff",     "ID_Exit",  "ID_Window",
    "ID_Tile", "ID_Cascade", "ID_ArrangeIcons", "ID_Help",           "ID_OnlineHelp", "ID_About", "ID_Tools",
};

constexpr CommandRight commandRights[] = {
    {Right::CoursesMenu, "ID_Courses"},
    {Right::DocumentManager, "ID_ReportManager"},
    {Right::SwitchDatabase, "ID_SwitchDatabase"},
    {Right::NewDatabase, "ID_New"},
    {Right::RegisterDatabase, "ID_RegisterDB"},
    {Right::IssueAwards, "ID_IssueAwards"},
    {Right::OrganisationsScreen, "ID_Organisations"},
    {Right::Calendar, "ID_ScheduleManager"},
    {Right::Import, "ID_Import"},
    {Right::Export, "ID_Export"},
    {Right::FastEnrol, "ID_FastEnroll"},
    {Right::OptionsMenu, "ID_Options"},
    {Right::DatabaseOptions, "ID_DatabaseOptions"},
    {Right::ContactManager, "ID_ContactManager"},
    {Right::ContactManager, "ID_QuickFilter"},
    {Right::ContactMaintenance, "ID_ContactMaintenance"},
    {Right::CourseManager, "ID_CourseManager"},
    {Right::CourseMaintenance, "ID_CourseMaintenance"},
    {Right::ContactReports, "ID_ContactReports"},
    {Right::CourseReports, "ID_CourseReports"},
};
} // namespace

std::span<const Command> Commands()
{
    return commands;
}

const std::vector<CommandMenu> &CommandMenus()
{
    static const std::vector<CommandMenu> menus{
        {"ID_File",
         "&File",
         {"ID_New", "ID_RegisterDB", "", "ID_SwitchDatabase", "ID_LogOff", "", "ID_TestDB", "ID_Properties",
          "", "ID_Import", "ID_Export", "", "ID_Exit"}},
        {"ID_Security", "&Security", {"ID_Users", "", "ID_DBSecurity"}},
        {"ID_Contacts",
         "&Contacts",
         {"ID_ContactManager", "ID_FastEnroll", "ID_ContactReports", "", "ID_ContactMaintenance", "",
          "ID_QuickFilter"}},
        {"ID_Courses",
         "C&ourses",
         {"ID_CourseManager", "ID_FastEnroll", "ID_CourseReports", "", "ID_CourseMaintenance",
          "ID_AwardBoard"}},
        {"ID_Tools",
         "T&ools",
         {"ID_CustomAttributes", "ID_CreditCardPayments", "ID_IssueAwards", "ID_Organisations",
          "ID_ReportManager", "ID_ScheduleManager", "", "ID_Options"}},
        {"ID_Window", "&Window", {"ID_Tile", "ID_Cascade", "ID_ArrangeIcons"}},
        {"ID_Help", "&Help", {"ID_OnlineHelp", "", "ID_About", "ID_Web"}},
    };
    return menus;
}

const CommandMenu &OptionsMenu()
{
    static const CommandMenu menu{"ID_Options", "&Options ...", {"ID_DatabaseOptions", "ID_LocalOptions"}};
    return menu;
}

std::span<const char *const> ToolBarCommands()
{
    return toolBarCommands;
}

std::span<const char *const> CommandsWithoutDatabase()
{
    return commandsWithoutDatabase;
}

QStringList ToolsClosedTo(const QString &rights)
{
    QStringList closed;
    const auto closeBelowFull = [&](Right right, const char *id) {
        if (RightIn(rights, right) < Level::Full)
            closed.append(QString::fromLatin1(id));
    };
    closeBelowFull(Right::SecurityMenu, "ID_Security");
    if (closed.isEmpty()) {
        if (RightIn(rights, Right::Users) == Level::None)
            closed.append(QStringLiteral("ID_Users"));
        closeBelowFull(Right::DatabasePassword, "ID_DBSecurity");
    }
    closeBelowFull(Right::ContactsMenu, "ID_Contacts");
    if (RightIn(rights, Right::ContactsMenu) == Level::Full)
        closeBelowFull(Right::ContactSettings, "ID_ContactGlobalSettings");
    for (const CommandRight &rule : commandRights)
        closeBelowFull(rule.right, rule.id);
    return closed;
}
