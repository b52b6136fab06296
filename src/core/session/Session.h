#pragma once

#include <QString>

#include <array>

class Connection;

/// The session: the process-wide values that every module reads. There is no session object, and nothing
/// else in the program is global.

extern Connection gConnection; ///< the one database connection; not open when there is no database
extern bool gDBValid;          ///< true when ConnectDatabase last succeeded
extern QString gDBQName;       ///< data source name; the server's name for a direct server connection
extern QString gDBQFilename;   ///< path of the database file; the catalogue of a server
extern QString gDBQDescription;
extern int gDBQType; ///< 1 = file, 2 = server, 0 or lower = anything else
extern bool gDBQUseODBC;
extern QString gDBPassword; ///< the database's own credentials, not the logged-on user's
extern QString gDBUser;
extern QString gUserName; ///< the logged-on user; empty until someone logs on with a name
extern QString gUserPassword;
extern QString gUserRights; ///< a digit for each right
extern int gDialogResult;   ///< result of the modal dialog closed last: a record's key, or 1 or 0
extern bool gStop; ///< ends the running long loop after its current row; cleared before a loop begins

// The settings of this workstation.
extern QString gDocDir;
extern int gWarnColour; ///< colour of the label of an empty required field, 0xRRGGBB
extern int gShowIDs;
extern int gDupCourseOpt; ///< bit flags of what a course duplication copies
extern std::array<int, 33> gContactData;
extern std::array<int, 12> gOrgData;
extern std::array<int, 6> gCourseInf;
extern QString gFromDate; ///< report range, "DD/MM/YYYY"
extern QString gToDate;

// Values of the report writer, which reading the settings sets to fixed values.
extern QString gReportWidth;
extern QString gReportFont;
extern QString gHeaderFile;
