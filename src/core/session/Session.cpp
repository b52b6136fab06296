#include "core/session/Session.h"

#include "platform/connection/Connection.h"

Connection gConnection;
bool gDBValid = false;
QString gDBQName;
QString gDBQFilename;
QString gDBQDescription;
int gDBQType = 0;
bool gDBQUseODBC = false;
QString gDBPassword;
QString gDBUser;
QString gUserName;
QString gUserPassword;
QString gUserRights;
int gDialogResult = 0;
bool gStop = false;

QString gDocDir;
int gWarnColour = 0xFFFFFF;
int gShowIDs = 1;
int gDupCourseOpt = 31;
std::array<int, 33> gContactData{};
std::array<int, 12> gOrgData{};
std::array<int, 6> gCourseInf{};
QString gFromDate;
QString gToDate;

QString gReportWidth;
QString gReportFont;
QString gHeaderFile;
