-- The schema of a database, described once. tools/make-template derives from it the template of a new
-- database file and the scripts for the servers in data/server.
--
-- Kinds of columns:
--   key         whole number that the database assigns on insert, never used twice
--   long        32-bit whole number; a reference (...Ref, ..._ID) holds a key of the table of that name
--   double      64-bit floating point: all money, percentages, rates and results
--   text        characters without a limit, compared without regard to case
--   text(n)     the same with a defined size. Sizes stand only where an index or a fixed form needs one:
--               a server cannot index a text without a limit
--   date        year x 10000 + month x 100 + day as a long, 0 = no date
--   time        hour x 100 + minute as a long
--   flag        long, 0 = false
--   bit         flag that older databases already hold as a bit
--
-- Columns take NULL. A column that a new row does not name is NULL, unless
--
--   default n   it is n: 1 for a reference to a table whose row 1 means that nothing was chosen
--   text        it is empty, as a form stores a field that nothing was typed into
--   text null   it is NULL: an import deletes the records whose name it is
--
-- Nothing is unique but the keys, and there are no foreign keys: the program keeps references right itself.

-- People

CREATE TABLE Contacts (
    ContactRef key,
    Cust_Forename text(255) null,
    Cust_Surname text(255) null,
    Cust_Addr1 text,
    Cust_Addr2 text,
    Cust_Addr3 text,
    Cust_Addr4 text,
    Cust_City long default 1,
    Cust_County long default 1,
    Cust_Country long default 1,
    Cust_Postcode text,
    Cust_TelDay text,
    Cust_TelEve text,
    Cust_TelExt text,
    Cust_Fax text,
    Cust_Email text(255),
    Cust_URL text,
    Cust_Designation long default 1,
    Cust_Ethnicgroup long default 1,
    Cust_DOB date default 0,
    Cust_Sex long default 0,
    Cust_Notes text,
    OrganRef long default 1,
    ContactContactRef long default 1,
    JobTitle text,
    ReferenceID text,
    AltRef1 text,
    AltRef2 text,
    AltRef3 text,
    AltRef4 text
);
CREATE INDEX ON Contacts (Cust_Surname, Cust_Forename);
CREATE INDEX ON Contacts (Cust_Email);
CREATE INDEX ON Contacts (Cust_City);
CREATE INDEX ON Contacts (Cust_County);
CREATE INDEX ON Contacts (Cust_Country);
CREATE INDEX ON Contacts (Cust_Designation);
CREATE INDEX ON Contacts (Cust_Ethnicgroup);
CREATE INDEX ON Contacts (OrganRef);
CREATE INDEX ON Contacts (ContactContactRef);

CREATE TABLE Designation (
    Designation_ID key,
    Title text(255),
    ReferenceID text
);
CREATE INDEX ON Designation (Title);

CREATE TABLE City (
    City_ID key,
    City text(255),
    ReferenceID text
);
CREATE INDEX ON City (City);

CREATE TABLE County (
    County_ID key,
    County text(255),
    ReferenceID text
);
CREATE INDEX ON County (County);

CREATE TABLE Country (
    Country_ID key,
    Country text(255),
    ReferenceID text
);
CREATE INDEX ON Country (Country);

CREATE TABLE EthnicGroup (
    Ethnic_ID key,
    Type text(255),
    ReferenceID text
);
CREATE INDEX ON EthnicGroup (Type);

CREATE TABLE Concessions (
    ConcessionRef key,
    ReferenceID text,
    Name text(255),
    Percentage double,
    HardDiscount double
);
CREATE INDEX ON Concessions (Name);

CREATE TABLE ContactConcession (
    ContactRef long,
    ConcessionRef long
);
CREATE INDEX ON ContactConcession (ContactRef, ConcessionRef);
CREATE INDEX ON ContactConcession (ConcessionRef);

CREATE TABLE GroupNames (
    GroupRef key,
    Name text(255),
    ReferenceID text,
    LinkRef long
);
CREATE INDEX ON GroupNames (Name);
CREATE INDEX ON GroupNames (LinkRef);

CREATE TABLE LinkNames (
    LinkRef key,
    LinkName text(255),
    ReferenceID text
);
CREATE INDEX ON LinkNames (LinkName);

CREATE TABLE Groups (
    ContactRef long,
    LinkRef long,
    GroupRef long
);
CREATE INDEX ON Groups (ContactRef);
CREATE INDEX ON Groups (LinkRef);
CREATE INDEX ON Groups (GroupRef);

CREATE TABLE RoleTypes (
    RoleTypeRef key,
    Name text(255),
    Description text,
    ChargeRate double,
    Status long,
    ReferenceID text
);
CREATE INDEX ON RoleTypes (Name);

CREATE TABLE ContactRoles (
    ContactRef long,
    RoleTypeRef long,
    ChargeRate double,
    StartDate date,
    EndDate date
);
CREATE INDEX ON ContactRoles (ContactRef);
CREATE INDEX ON ContactRoles (RoleTypeRef);

CREATE TABLE Ref (
    ContactRef long
);
CREATE INDEX ON Ref (ContactRef);

-- Organisations

CREATE TABLE Organisations (
    OrganRef key,
    OrganName text(255) null,
    ReferenceID text,
    Addr1 text,
    Addr2 text,
    Addr3 text,
    Addr4 text,
    City long default 1,
    County long default 1,
    Country long default 1,
    TelDay text,
    TelOut text,
    Fax text,
    Email text,
    URL text,
    Postcode text,
    Notes text,
    Board bit
);
CREATE INDEX ON Organisations (OrganName);
CREATE INDEX ON Organisations (City);
CREATE INDEX ON Organisations (County);
CREATE INDEX ON Organisations (Country);

CREATE TABLE OrganChars (
    OrganRef long,
    ConcessionRef long
);
CREATE INDEX ON OrganChars (OrganRef, ConcessionRef);
CREATE INDEX ON OrganChars (ConcessionRef);

-- Fields that users define

CREATE TABLE CustomAttributes (
    AttributeRef key,
    AttributeName text(255),
    AttributeType long,
    AppliesTo long
);
CREATE INDEX ON CustomAttributes (AttributeName);
CREATE INDEX ON CustomAttributes (AppliesTo);

CREATE TABLE CustomAttributeValues (
    AttributeValueRef key,
    AttributeValue text,
    AttributeRef long
);
CREATE INDEX ON CustomAttributeValues (AttributeRef);

CREATE TABLE AppliedAttributes (
    AttributeRef long,
    AttributeValueRef long,
    AppliesToRef long,
    RefSection long
);
CREATE INDEX ON AppliedAttributes (AppliesToRef, RefSection);
CREATE INDEX ON AppliedAttributes (AttributeRef);
CREATE INDEX ON AppliedAttributes (AttributeValueRef);

-- Courses and what they use

CREATE TABLE Courses (
    CourseRef key,
    Title text(255),
    Description text,
    Fee double,
    Limit long,
    ReferenceID text
);
CREATE INDEX ON Courses (Title);

CREATE TABLE CoursesHierarchy (
    HRef key,
    Label text(255),
    Parent long,
    Description text
);
CREATE INDEX ON CoursesHierarchy (Label);
CREATE INDEX ON CoursesHierarchy (Parent);

CREATE TABLE CoursesRelationships (
    CourseRef long,
    CourseHierarchyRef long
);
CREATE INDEX ON CoursesRelationships (CourseRef);
CREATE INDEX ON CoursesRelationships (CourseHierarchyRef);

CREATE TABLE CourseEvents (
    EventRef key,
    CourseRef long,
    EventNo long,
    EDate date,
    TimeFrom time,
    TimeTo time,
    Description text
);
CREATE INDEX ON CourseEvents (CourseRef, EventNo);
CREATE INDEX ON CourseEvents (EventNo);
CREATE INDEX ON CourseEvents (EDate);

CREATE TABLE CourseCharNames (
    ConcessionRef key,
    Name text(255),
    ReferenceID text
);
CREATE INDEX ON CourseCharNames (Name);

CREATE TABLE CourseChar (
    CourseRef long,
    ConcessionRef long
);
CREATE INDEX ON CourseChar (CourseRef);
CREATE INDEX ON CourseChar (ConcessionRef);

CREATE TABLE CourseStaff (
    CourseRef long,
    ContactRef long,
    RoleTypeRef long
);
CREATE INDEX ON CourseStaff (CourseRef);
CREATE INDEX ON CourseStaff (ContactRef);
CREATE INDEX ON CourseStaff (RoleTypeRef);

CREATE TABLE CourseVenues (
    CourseRef long,
    VenueRef long
);
CREATE INDEX ON CourseVenues (CourseRef);
CREATE INDEX ON CourseVenues (VenueRef);

CREATE TABLE CourseFacilities (
    CourseRef long,
    FacilityRef long
);
CREATE INDEX ON CourseFacilities (CourseRef);
CREATE INDEX ON CourseFacilities (FacilityRef);

CREATE TABLE StaffEmployed (
    CourseRef long,
    EventNo long,
    ContactRef long,
    RoleTypeRef long,
    EDate date,
    TimeFrom time,
    TimeTo time
);
CREATE INDEX ON StaffEmployed (CourseRef, EventNo);
CREATE INDEX ON StaffEmployed (EventNo);
CREATE INDEX ON StaffEmployed (ContactRef, EDate);
CREATE INDEX ON StaffEmployed (RoleTypeRef);
CREATE INDEX ON StaffEmployed (EDate);

CREATE TABLE VenuesEmployed (
    CourseRef long,
    EventNo long,
    VenueRef long,
    EDate date,
    TimeFrom time,
    TimeTo time
);
CREATE INDEX ON VenuesEmployed (CourseRef, EventNo);
CREATE INDEX ON VenuesEmployed (EventNo);
CREATE INDEX ON VenuesEmployed (VenueRef, EDate);
CREATE INDEX ON VenuesEmployed (EDate);

CREATE TABLE FacilitiesEmployed (
    CourseRef long,
    EventNo long,
    FacilityRef long,
    EDate date,
    TimeFrom time,
    TimeTo time
);
CREATE INDEX ON FacilitiesEmployed (CourseRef, EventNo);
CREATE INDEX ON FacilitiesEmployed (EventNo);
CREATE INDEX ON FacilitiesEmployed (FacilityRef, EDate);
CREATE INDEX ON FacilitiesEmployed (EDate);

CREATE TABLE AttendanceRecord (
    CourseRef long,
    ContactRef long,
    EventNo long
);
CREATE INDEX ON AttendanceRecord (CourseRef, EventNo);
CREATE INDEX ON AttendanceRecord (ContactRef);
CREATE INDEX ON AttendanceRecord (EventNo);

CREATE TABLE Venues (
    VenueRef key,
    Description text(255),
    Notes text,
    ChargeRate double,
    OrganRef long default 1,
    ReferenceID text
);
CREATE INDEX ON Venues (Description);
CREATE INDEX ON Venues (OrganRef);

CREATE TABLE Facilities (
    FacilityRef key,
    Name text(255),
    Description text,
    ChargeRate double,
    OrganRef long default 1,
    ReferenceID text
);
CREATE INDEX ON Facilities (Name);
CREATE INDEX ON Facilities (OrganRef);

CREATE TABLE ExclusionDates (
    ExcludeRef key,
    ReferenceID text,
    DateFrom date,
    DateTo date
);
CREATE INDEX ON ExclusionDates (DateFrom);

-- Assessments and awards

CREATE TABLE Exam (
    ExamRef key,
    ExamName text(255),
    ReferenceID text,
    ExamNameRef long default 1,
    ExamTypeRef long default 1,
    OrganRef long default 1,
    VenueRef long default 1,
    DateFrom date,
    DateTo date,
    ResultFormat text,
    Notes text,
    ScoreAbove0 double,
    AwardGrade0 text,
    ScoreAbove1 double,
    AwardGrade1 text,
    ScoreAbove2 double,
    AwardGrade2 text,
    ScoreAbove3 double,
    AwardGrade3 text,
    ScoreAbove4 double,
    AwardGrade4 text,
    ScoreAbove5 double,
    AwardGrade5 text,
    ScoreAbove6 double,
    AwardGrade6 text,
    ScoreAbove7 double,
    AwardGrade7 text,
    ScoreAbove8 double,
    AwardGrade8 text,
    ScoreAbove9 double,
    AwardGrade9 text
);
CREATE INDEX ON Exam (ExamName);
CREATE INDEX ON Exam (ExamNameRef);
CREATE INDEX ON Exam (ExamTypeRef);
CREATE INDEX ON Exam (OrganRef);
CREATE INDEX ON Exam (VenueRef);

CREATE TABLE ExamName (
    ExamNameRef key,
    Name text(255),
    ReferenceID text
);
CREATE INDEX ON ExamName (Name);

CREATE TABLE ExamType (
    ExamTypeRef key,
    Type text(255),
    ReferenceID text
);
CREATE INDEX ON ExamType (Type);

CREATE TABLE CourseExams (
    CourseRef long,
    ExamRef long
);
CREATE INDEX ON CourseExams (CourseRef);
CREATE INDEX ON CourseExams (ExamRef);

CREATE TABLE StudentExams (
    CourseRef long,
    ExamRef long,
    ContactRef long,
    ExamResult double,
    EstimatedResult double,
    ResultFormat text,
    Notes text,
    AwardGrade text
);
CREATE INDEX ON StudentExams (CourseRef);
CREATE INDEX ON StudentExams (ExamRef, ContactRef);
CREATE INDEX ON StudentExams (ContactRef);

CREATE TABLE AwardNames (
    AwardRef key,
    AwardName text(255),
    ReferenceID text,
    Notes text,
    ReportRef long,
    Board long default 1
);
CREATE INDEX ON AwardNames (AwardName);
CREATE INDEX ON AwardNames (ReportRef);
CREATE INDEX ON AwardNames (Board);

CREATE TABLE Awards (
    ExamRef long,
    AwardRef long
);
CREATE INDEX ON Awards (ExamRef);
CREATE INDEX ON Awards (AwardRef);

CREATE TABLE IssuedAwards (
    ContactRef long,
    AwardRef long,
    IssueDate date
);
CREATE INDEX ON IssuedAwards (ContactRef);
CREATE INDEX ON IssuedAwards (AwardRef);

CREATE TABLE Audit_AwardsIssued (
    ContactRef long,
    AwardRef long,
    Designation text,
    FirstName text,
    LastName text,
    Address1 text,
    Address2 text,
    Address3 text,
    Address4 text,
    City text,
    County text,
    Postcode text,
    Country text,
    Award text,
    AwardIssueRef text,
    AwardIssueDate text,
    AwardNotes text
);
CREATE INDEX ON Audit_AwardsIssued (ContactRef);
CREATE INDEX ON Audit_AwardsIssued (AwardRef);

-- Enrolment and payments

CREATE TABLE StudentsEnrolled (
    CourseRef long,
    ContactRef long,
    BasicFee double,
    Discount double,
    AmountPaid double,
    Vouchers double,
    Vouchers2 double,
    Vouchers3 double,
    Vouchers4 double,
    Vouchers5 double,
    ChequePaid double,
    CCardPaid double,
    ConcessionType text(255),
    ReceiptNo text,
    Notes text,
    TaxName text,
    TaxRate double
);
CREATE INDEX ON StudentsEnrolled (CourseRef, ContactRef);
CREATE INDEX ON StudentsEnrolled (ContactRef);
CREATE INDEX ON StudentsEnrolled (ConcessionType);

CREATE TABLE Transactions (
    CourseRef long,
    ContactRef long,
    DateTrn date,
    ReceiptNo text,
    MoneyPaid double,
    ChequePaid double,
    CCardPaid double,
    CreditCardRef long,
    VouchersPaid double,
    Vouchers2Paid double,
    Vouchers3Paid double,
    Vouchers4Paid double,
    Vouchers5Paid double,
    Vouchers1Label text,
    Vouchers2Label text,
    Vouchers3Label text,
    Vouchers4Label text,
    Vouchers5Label text
);
CREATE INDEX ON Transactions (CourseRef, ContactRef);
CREATE INDEX ON Transactions (ContactRef);
CREATE INDEX ON Transactions (CreditCardRef);
CREATE INDEX ON Transactions (DateTrn);

CREATE TABLE CreditCardTransaction (
    CreditCardRef key,
    CourseRef long,
    ContactRef long,
    DateTrn date,
    AmountPaid long,
    CardHolderName text,
    CardHolderAddr text,
    CardType text,
    CardNumber text,
    CardValidFrom long,
    CardValidTo long,
    CardIssueNo text,
    PaymentCleared flag,
    VCode text(255)
);
CREATE INDEX ON CreditCardTransaction (CourseRef, ContactRef);
CREATE INDEX ON CreditCardTransaction (ContactRef);

CREATE TABLE WaitingList (
    CourseRef long,
    ContactRef long,
    Keywords text,
    LatestDate date
);
CREATE INDEX ON WaitingList (CourseRef, ContactRef);
CREATE INDEX ON WaitingList (ContactRef);

-- The document library

CREATE TABLE Reports (
    ReportRef key,
    ReportName text(255),
    Filename text,
    SQLstring text
);
CREATE INDEX ON Reports (ReportName);

CREATE TABLE ReportHierarchy (
    HRef key,
    Label text(255),
    Parent long,
    Description text
);
CREATE INDEX ON ReportHierarchy (Label);
CREATE INDEX ON ReportHierarchy (Parent);

CREATE TABLE ReportRelationships (
    ReportRef long,
    ReportHierarchyRef long
);
CREATE INDEX ON ReportRelationships (ReportRef);
CREATE INDEX ON ReportRelationships (ReportHierarchyRef);

-- The system's own tables

CREATE TABLE Users (
    UserID key,
    UserName text(255),
    Password text,
    SecurityRights text(256)
);
CREATE INDEX ON Users (UserName);

CREATE TABLE System (
    Ref long,
    SystemValue text
);

CREATE TABLE Version (
    DBVersion double
);

-- Row 1 of these tables means that nothing was chosen: references hold 1, never 0 or NULL, so that
-- joins always find a row.

INSERT INTO Designation (Designation_ID, Title, ReferenceID) VALUES (1, '', '');
INSERT INTO City (City_ID, City, ReferenceID) VALUES (1, '', '');
INSERT INTO County (County_ID, County, ReferenceID) VALUES (1, '', '');
INSERT INTO Country (Country_ID, Country, ReferenceID) VALUES (1, '', '');
INSERT INTO EthnicGroup (Ethnic_ID, Type, ReferenceID) VALUES (1, '', '');
INSERT INTO Organisations (OrganRef, OrganName, ReferenceID, City, County, Country, Board) VALUES (1, '', '', 1, 1, 1, 0);
INSERT INTO Contacts (ContactRef, Cust_Forename, Cust_Surname, ReferenceID, Cust_City, Cust_County, Cust_Country, Cust_Designation, Cust_Ethnicgroup, Cust_DOB, Cust_Sex, OrganRef, ContactContactRef) VALUES (1, '', '', '', 1, 1, 1, 1, 1, 0, 0, 1, 1);
INSERT INTO Venues (VenueRef, Description, ReferenceID, ChargeRate, OrganRef) VALUES (1, '', '', 0, 1);
INSERT INTO ExamName (ExamNameRef, Name, ReferenceID) VALUES (1, '', '');
INSERT INTO ExamType (ExamTypeRef, Type, ReferenceID) VALUES (1, '', '');
INSERT INTO Version (DBVersion) VALUES (3);
