-- Made by tools/make-template from data/system/schema.sql. Do not edit.
-- Run it in an empty catalogue whose collation ignores case, for example
--   CREATE DATABASE Veltrane COLLATE Latin1_General_100_CI_AS_SC_UTF8
--   sqlcmd -b -d Veltrane -i schema-sqlserver.sql
-- A server before 2019 has no UTF-8 collation. One like Latin1_General_CI_AS serves there,
-- and keeps the letters of its code page: the program writes its texts without an N.
SET QUOTED_IDENTIFIER ON;
SET NOCOUNT ON;
GO
-- Readers do not wait for writers.
ALTER DATABASE CURRENT SET READ_COMMITTED_SNAPSHOT ON WITH ROLLBACK IMMEDIATE;
GO
CREATE TABLE [Contacts] (
    [ContactRef] INT IDENTITY(1,1) NOT NULL PRIMARY KEY,
    [Cust_Forename] NVARCHAR(255) NULL,
    [Cust_Surname] NVARCHAR(255) NULL,
    [Cust_Addr1] NVARCHAR(MAX) NULL DEFAULT '',
    [Cust_Addr2] NVARCHAR(MAX) NULL DEFAULT '',
    [Cust_Addr3] NVARCHAR(MAX) NULL DEFAULT '',
    [Cust_Addr4] NVARCHAR(MAX) NULL DEFAULT '',
    [Cust_City] INT NULL DEFAULT 1,
    [Cust_County] INT NULL DEFAULT 1,
    [Cust_Country] INT NULL DEFAULT 1,
    [Cust_Postcode] NVARCHAR(MAX) NULL DEFAULT '',
    [Cust_TelDay] NVARCHAR(MAX) NULL DEFAULT '',
    [Cust_TelEve] NVARCHAR(MAX) NULL DEFAULT '',
    [Cust_TelExt] NVARCHAR(MAX) NULL DEFAULT '',
    [Cust_Fax] NVARCHAR(MAX) NULL DEFAULT '',
    [Cust_Email] NVARCHAR(255) NULL DEFAULT '',
    [Cust_URL] NVARCHAR(MAX) NULL DEFAULT '',
    [Cust_Designation] INT NULL DEFAULT 1,
    [Cust_Ethnicgroup] INT NULL DEFAULT 1,
    [Cust_DOB] INT NULL DEFAULT 0,
    [Cust_Sex] INT NULL DEFAULT 0,
    [Cust_Notes] NVARCHAR(MAX) NULL DEFAULT '',
    [OrganRef] INT NULL DEFAULT 1,
    [ContactContactRef] INT NULL DEFAULT 1,
    [JobTitle] NVARCHAR(MAX) NULL DEFAULT '',
    [ReferenceID] NVARCHAR(MAX) NULL DEFAULT '',
    [AltRef1] NVARCHAR(MAX) NULL DEFAULT '',
    [AltRef2] NVARCHAR(MAX) NULL DEFAULT '',
    [AltRef3] NVARCHAR(MAX) NULL DEFAULT '',
    [AltRef4] NVARCHAR(MAX) NULL DEFAULT ''
);
GO
CREATE TABLE [Designation] (
    [Designation_ID] INT IDENTITY(1,1) NOT NULL PRIMARY KEY,
    [Title] NVARCHAR(255) NULL DEFAULT '',
    [ReferenceID] NVARCHAR(MAX) NULL DEFAULT ''
);
GO
CREATE TABLE [City] (
    [City_ID] INT IDENTITY(1,1) NOT NULL PRIMARY KEY,
    [City] NVARCHAR(255) NULL DEFAULT '',
    [ReferenceID] NVARCHAR(MAX) NULL DEFAULT ''
);
GO
CREATE TABLE [County] (
    [County_ID] INT IDENTITY(1,1) NOT NULL PRIMARY KEY,
    [County] NVARCHAR(255) NULL DEFAULT '',
    [ReferenceID] NVARCHAR(MAX) NULL DEFAULT ''
);
GO
CREATE TABLE [Country] (
    [Country_ID] INT IDENTITY(1,1) NOT NULL PRIMARY KEY,
    [Country] NVARCHAR(255) NULL DEFAULT '',
    [ReferenceID] NVARCHAR(MAX) NULL DEFAULT ''
);
GO
CREATE TABLE [EthnicGroup] (
    [Ethnic_ID] INT IDENTITY(1,1) NOT NULL PRIMARY KEY,
    [Type] NVARCHAR(255) NULL DEFAULT '',
    [ReferenceID] NVARCHAR(MAX) NULL DEFAULT ''
);
GO
CREATE TABLE [Concessions] (
    [ConcessionRef] INT IDENTITY(1,1) NOT NULL PRIMARY KEY,
    [ReferenceID] NVARCHAR(MAX) NULL DEFAULT '',
    [Name] NVARCHAR(255) NULL DEFAULT '',
    [Percentage] FLOAT NULL,
    [HardDiscount] FLOAT NULL
);
GO
CREATE TABLE [ContactConcession] (
    [ContactRef] INT NULL,
    [ConcessionRef] INT NULL
);
GO
CREATE TABLE [GroupNames] (
    [GroupRef] INT IDENTITY(1,1) NOT NULL PRIMARY KEY,
    [Name] NVARCHAR(255) NULL DEFAULT '',
    [ReferenceID] NVARCHAR(MAX) NULL DEFAULT '',
    [LinkRef] INT NULL
);
GO
CREATE TABLE [LinkNames] (
    [LinkRef] INT IDENTITY(1,1) NOT NULL PRIMARY KEY,
    [LinkName] NVARCHAR(255) NULL DEFAULT '',
    [ReferenceID] NVARCHAR(MAX) NULL DEFAULT ''
);
GO
CREATE TABLE [Groups] (
    [ContactRef] INT NULL,
    [LinkRef] INT NULL,
    [GroupRef] INT NULL
);
GO
CREATE TABLE [RoleTypes] (
    [RoleTypeRef] INT IDENTITY(1,1) NOT NULL PRIMARY KEY,
    [Name] NVARCHAR(255) NULL DEFAULT '',
    [Description] NVARCHAR(MAX) NULL DEFAULT '',
    [ChargeRate] FLOAT NULL,
    [Status] INT NULL,
    [ReferenceID] NVARCHAR(MAX) NULL DEFAULT ''
);
GO
CREATE TABLE [ContactRoles] (
    [ContactRef] INT NULL,
    [RoleTypeRef] INT NULL,
    [ChargeRate] FLOAT NULL,
    [StartDate] INT NULL,
    [EndDate] INT NULL
);
GO
CREATE TABLE [Ref] (
    [ContactRef] INT NULL
);
GO
CREATE TABLE [Organisations] (
    [OrganRef] INT IDENTITY(1,1) NOT NULL PRIMARY KEY,
    [OrganName] NVARCHAR(255) NULL,
    [ReferenceID] NVARCHAR(MAX) NULL DEFAULT '',
    [Addr1] NVARCHAR(MAX) NULL DEFAULT '',
    [Addr2] NVARCHAR(MAX) NULL DEFAULT '',
    [Addr3] NVARCHAR(MAX) NULL DEFAULT '',
    [Addr4] NVARCHAR(MAX) NULL DEFAULT '',
    [City] INT NULL DEFAULT 1,
    [County] INT NULL DEFAULT 1,
    [Country] INT NULL DEFAULT 1,
    [TelDay] NVARCHAR(MAX) NULL DEFAULT '',
    [TelOut] NVARCHAR(MAX) NULL DEFAULT '',
    [Fax] NVARCHAR(MAX) NULL DEFAULT '',
    [Email] NVARCHAR(MAX) NULL DEFAULT '',
    [URL] NVARCHAR(MAX) NULL DEFAULT '',
    [Postcode] NVARCHAR(MAX) NULL DEFAULT '',
    [Notes] NVARCHAR(MAX) NULL DEFAULT '',
    [Board] BIT NULL
);
GO
CREATE TABLE [OrganChars] (
    [OrganRef] INT NULL,
    [ConcessionRef] INT NULL
);
GO
CREATE TABLE [CustomAttributes] (
    [AttributeRef] INT IDENTITY(1,1) NOT NULL PRIMARY KEY,
    [AttributeName] NVARCHAR(255) NULL DEFAULT '',
    [AttributeType] INT NULL,
    [AppliesTo] INT NULL
);
GO
CREATE TABLE [CustomAttributeValues] (
    [AttributeValueRef] INT IDENTITY(1,1) NOT NULL PRIMARY KEY,
    [AttributeValue] NVARCHAR(MAX) NULL DEFAULT '',
    [AttributeRef] INT NULL
);
GO
CREATE TABLE [AppliedAttributes] (
    [AttributeRef] INT NULL,
    [AttributeValueRef] INT NULL,
    [AppliesToRef] INT NULL,
    [RefSection] INT NULL
);
GO
CREATE TABLE [Courses] (
    [CourseRef] INT IDENTITY(1,1) NOT NULL PRIMARY KEY,
    [Title] NVARCHAR(255) NULL DEFAULT '',
    [Description] NVARCHAR(MAX) NULL DEFAULT '',
    [Fee] FLOAT NULL,
    [Limit] INT NULL,
    [ReferenceID] NVARCHAR(MAX) NULL DEFAULT ''
);
GO
CREATE TABLE [CoursesHierarchy] (
    [HRef] INT IDENTITY(1,1) NOT NULL PRIMARY KEY,
    [Label] NVARCHAR(255) NULL DEFAULT '',
    [Parent] INT NULL,
    [Description] NVARCHAR(MAX) NULL DEFAULT ''
);
GO
CREATE TABLE [CoursesRelationships] (
    [CourseRef] INT NULL,
    [CourseHierarchyRef] INT NULL
);
GO
CREATE TABLE [CourseEvents] (
    [EventRef] INT IDENTITY(1,1) NOT NULL PRIMARY KEY,
    [CourseRef] INT NULL,
    [EventNo] INT NULL,
    [EDate] INT NULL,
    [TimeFrom] INT NULL,
    [TimeTo] INT NULL,
    [Description] NVARCHAR(MAX) NULL DEFAULT ''
);
GO
CREATE TABLE [CourseCharNames] (
    [ConcessionRef] INT IDENTITY(1,1) NOT NULL PRIMARY KEY,
    [Name] NVARCHAR(255) NULL DEFAULT '',
    [ReferenceID] NVARCHAR(MAX) NULL DEFAULT ''
);
GO
CREATE TABLE [CourseChar] (
    [CourseRef] INT NULL,
    [ConcessionRef] INT NULL
);
GO
CREATE TABLE [CourseStaff] (
    [CourseRef] INT NULL,
    [ContactRef] INT NULL,
    [RoleTypeRef] INT NULL
);
GO
CREATE TABLE [CourseVenues] (
    [CourseRef] INT NULL,
    [VenueRef] INT NULL
);
GO
CREATE TABLE [CourseFacilities] (
    [CourseRef] INT NULL,
    [FacilityRef] INT NULL
);
GO
CREATE TABLE [StaffEmployed] (
    [CourseRef] INT NULL,
    [EventNo] INT NULL,
    [ContactRef] INT NULL,
    [RoleTypeRef] INT NULL,
    [EDate] INT NULL,
    [TimeFrom] INT NULL,
    [TimeTo] INT NULL
);
GO
CREATE TABLE [VenuesEmployed] (
    [CourseRef] INT NULL,
    [EventNo] INT NULL,
    [VenueRef] INT NULL,
    [EDate] INT NULL,
    [TimeFrom] INT NULL,
    [TimeTo] INT NULL
);
GO
CREATE TABLE [FacilitiesEmployed] (
    [CourseRef] INT NULL,
    [EventNo] INT NULL,
    [FacilityRef] INT NULL,
    [EDate] INT NULL,
    [TimeFrom] INT NULL,
    [TimeTo] INT NULL
);
GO
CREATE TABLE [AttendanceRecord] (
    [CourseRef] INT NULL,
    [ContactRef] INT NULL,
    [EventNo] INT NULL
);
GO
CREATE TABLE [Venues] (
    [VenueRef] INT IDENTITY(1,1) NOT NULL PRIMARY KEY,
    [Description] NVARCHAR(255) NULL DEFAULT '',
    [Notes] NVARCHAR(MAX) NULL DEFAULT '',
    [ChargeRate] FLOAT NULL,
    [OrganRef] INT NULL DEFAULT 1,
    [ReferenceID] NVARCHAR(MAX) NULL DEFAULT ''
);
GO
CREATE TABLE [Facilities] (
    [FacilityRef] INT IDENTITY(1,1) NOT NULL PRIMARY KEY,
    [Name] NVARCHAR(255) NULL DEFAULT '',
    [Description] NVARCHAR(MAX) NULL DEFAULT '',
    [ChargeRate] FLOAT NULL,
    [OrganRef] INT NULL DEFAULT 1,
    [ReferenceID] NVARCHAR(MAX) NULL DEFAULT ''
);
GO
CREATE TABLE [ExclusionDates] (
    [ExcludeRef] INT IDENTITY(1,1) NOT NULL PRIMARY KEY,
    [ReferenceID] NVARCHAR(MAX) NULL DEFAULT '',
    [DateFrom] INT NULL,
    [DateTo] INT NULL
);
GO
CREATE TABLE [Exam] (
    [ExamRef] INT IDENTITY(1,1) NOT NULL PRIMARY KEY,
    [ExamName] NVARCHAR(255) NULL DEFAULT '',
    [ReferenceID] NVARCHAR(MAX) NULL DEFAULT '',
    [ExamNameRef] INT NULL DEFAULT 1,
    [ExamTypeRef] INT NULL DEFAULT 1,
    [OrganRef] INT NULL DEFAULT 1,
    [VenueRef] INT NULL DEFAULT 1,
    [DateFrom] INT NULL,
    [DateTo] INT NULL,
    [ResultFormat] NVARCHAR(MAX) NULL DEFAULT '',
    [Notes] NVARCHAR(MAX) NULL DEFAULT '',
    [ScoreAbove0] FLOAT NULL,
    [AwardGrade0] NVARCHAR(MAX) NULL DEFAULT '',
    [ScoreAbove1] FLOAT NULL,
    [AwardGrade1] NVARCHAR(MAX) NULL DEFAULT '',
    [ScoreAbove2] FLOAT NULL,
    [AwardGrade2] NVARCHAR(MAX) NULL DEFAULT '',
    [ScoreAbove3] FLOAT NULL,
    [AwardGrade3] NVARCHAR(MAX) NULL DEFAULT '',
    [ScoreAbove4] FLOAT NULL,
    [AwardGrade4] NVARCHAR(MAX) NULL DEFAULT '',
    [ScoreAbove5] FLOAT NULL,
    [AwardGrade5] NVARCHAR(MAX) NULL DEFAULT '',
    [ScoreAbove6] FLOAT NULL,
    [AwardGrade6] NVARCHAR(MAX) NULL DEFAULT '',
    [ScoreAbove7] FLOAT NULL,
    [AwardGrade7] NVARCHAR(MAX) NULL DEFAULT '',
    [ScoreAbove8] FLOAT NULL,
    [AwardGrade8] NVARCHAR(MAX) NULL DEFAULT '',
    [ScoreAbove9] FLOAT NULL,
    [AwardGrade9] NVARCHAR(MAX) NULL DEFAULT ''
);
GO
CREATE TABLE [ExamName] (
    [ExamNameRef] INT IDENTITY(1,1) NOT NULL PRIMARY KEY,
    [Name] NVARCHAR(255) NULL DEFAULT '',
    [ReferenceID] NVARCHAR(MAX) NULL DEFAULT ''
);
GO
CREATE TABLE [ExamType] (
    [ExamTypeRef] INT IDENTITY(1,1) NOT NULL PRIMARY KEY,
    [Type] NVARCHAR(255) NULL DEFAULT '',
    [ReferenceID] NVARCHAR(MAX) NULL DEFAULT ''
);
GO
CREATE TABLE [CourseExams] (
    [CourseRef] INT NULL,
    [ExamRef] INT NULL
);
GO
CREATE TABLE [StudentExams] (
    [CourseRef] INT NULL,
    [ExamRef] INT NULL,
    [ContactRef] INT NULL,
    [ExamResult] FLOAT NULL,
    [EstimatedResult] FLOAT NULL,
    [ResultFormat] NVARCHAR(MAX) NULL DEFAULT '',
    [Notes] NVARCHAR(MAX) NULL DEFAULT '',
    [AwardGrade] NVARCHAR(MAX) NULL DEFAULT ''
);
GO
CREATE TABLE [AwardNames] (
    [AwardRef] INT IDENTITY(1,1) NOT NULL PRIMARY KEY,
    [AwardName] NVARCHAR(255) NULL DEFAULT '',
    [ReferenceID] NVARCHAR(MAX) NULL DEFAULT '',
    [Notes] NVARCHAR(MAX) NULL DEFAULT '',
    [ReportRef] INT NULL,
    [Board] INT NULL DEFAULT 1
);
GO
CREATE TABLE [Awards] (
    [ExamRef] INT NULL,
    [AwardRef] INT NULL
);
GO
CREATE TABLE [IssuedAwards] (
    [ContactRef] INT NULL,
    [AwardRef] INT NULL,
    [IssueDate] INT NULL
);
GO
CREATE TABLE [Audit_AwardsIssued] (
    [ContactRef] INT NULL,
    [AwardRef] INT NULL,
    [Designation] NVARCHAR(MAX) NULL DEFAULT '',
    [FirstName] NVARCHAR(MAX) NULL DEFAULT '',
    [LastName] NVARCHAR(MAX) NULL DEFAULT '',
    [Address1] NVARCHAR(MAX) NULL DEFAULT '',
    [Address2] NVARCHAR(MAX) NULL DEFAULT '',
    [Address3] NVARCHAR(MAX) NULL DEFAULT '',
    [Address4] NVARCHAR(MAX) NULL DEFAULT '',
    [City] NVARCHAR(MAX) NULL DEFAULT '',
    [County] NVARCHAR(MAX) NULL DEFAULT '',
    [Postcode] NVARCHAR(MAX) NULL DEFAULT '',
    [Country] NVARCHAR(MAX) NULL DEFAULT '',
    [Award] NVARCHAR(MAX) NULL DEFAULT '',
    [AwardIssueRef] NVARCHAR(MAX) NULL DEFAULT '',
    [AwardIssueDate] NVARCHAR(MAX) NULL DEFAULT '',
    [AwardNotes] NVARCHAR(MAX) NULL DEFAULT ''
);
GO
CREATE TABLE [StudentsEnrolled] (
    [CourseRef] INT NULL,
    [ContactRef] INT NULL,
    [BasicFee] FLOAT NULL,
    [Discount] FLOAT NULL,
    [AmountPaid] FLOAT NULL,
    [Vouchers] FLOAT NULL,
    [Vouchers2] FLOAT NULL,
    [Vouchers3] FLOAT NULL,
    [Vouchers4] FLOAT NULL,
    [Vouchers5] FLOAT NULL,
    [ChequePaid] FLOAT NULL,
    [CCardPaid] FLOAT NULL,
    [ConcessionType] NVARCHAR(255) NULL DEFAULT '',
    [ReceiptNo] NVARCHAR(MAX) NULL DEFAULT '',
    [Notes] NVARCHAR(MAX) NULL DEFAULT '',
    [TaxName] NVARCHAR(MAX) NULL DEFAULT '',
    [TaxRate] FLOAT NULL
);
GO
CREATE TABLE [Transactions] (
    [CourseRef] INT NULL,
    [ContactRef] INT NULL,
    [DateTrn] INT NULL,
    [ReceiptNo] NVARCHAR(MAX) NULL DEFAULT '',
    [MoneyPaid] FLOAT NULL,
    [ChequePaid] FLOAT NULL,
    [CCardPaid] FLOAT NULL,
    [CreditCardRef] INT NULL,
    [VouchersPaid] FLOAT NULL,
    [Vouchers2Paid] FLOAT NULL,
    [Vouchers3Paid] FLOAT NULL,
    [Vouchers4Paid] FLOAT NULL,
    [Vouchers5Paid] FLOAT NULL,
    [Vouchers1Label] NVARCHAR(MAX) NULL DEFAULT '',
    [Vouchers2Label] NVARCHAR(MAX) NULL DEFAULT '',
    [Vouchers3Label] NVARCHAR(MAX) NULL DEFAULT '',
    [Vouchers4Label] NVARCHAR(MAX) NULL DEFAULT '',
    [Vouchers5Label] NVARCHAR(MAX) NULL DEFAULT ''
);
GO
CREATE TABLE [CreditCardTransaction] (
    [CreditCardRef] INT IDENTITY(1,1) NOT NULL PRIMARY KEY,
    [CourseRef] INT NULL,
    [ContactRef] INT NULL,
    [DateTrn] INT NULL,
    [AmountPaid] INT NULL,
    [CardHolderName] NVARCHAR(MAX) NULL DEFAULT '',
    [CardHolderAddr] NVARCHAR(MAX) NULL DEFAULT '',
    [CardType] NVARCHAR(MAX) NULL DEFAULT '',
    [CardNumber] NVARCHAR(MAX) NULL DEFAULT '',
    [CardValidFrom] INT NULL,
    [CardValidTo] INT NULL,
    [CardIssueNo] NVARCHAR(MAX) NULL DEFAULT '',
    [PaymentCleared] INT NULL,
    [VCode] NVARCHAR(255) NULL DEFAULT ''
);
GO
CREATE TABLE [WaitingList] (
    [CourseRef] INT NULL,
    [ContactRef] INT NULL,
    [Keywords] NVARCHAR(MAX) NULL DEFAULT '',
    [LatestDate] INT NULL
);
GO
CREATE TABLE [Reports] (
    [ReportRef] INT IDENTITY(1,1) NOT NULL PRIMARY KEY,
    [ReportName] NVARCHAR(255) NULL DEFAULT '',
    [Filename] NVARCHAR(MAX) NULL DEFAULT '',
    [SQLstring] NVARCHAR(MAX) NULL DEFAULT ''
);
GO
CREATE TABLE [ReportHierarchy] (
    [HRef] INT IDENTITY(1,1) NOT NULL PRIMARY KEY,
    [Label] NVARCHAR(255) NULL DEFAULT '',
    [Parent] INT NULL,
    [Description] NVARCHAR(MAX) NULL DEFAULT ''
);
GO
CREATE TABLE [ReportRelationships] (
    [ReportRef] INT NULL,
    [ReportHierarchyRef] INT NULL
);
GO
CREATE TABLE [Users] (
    [UserID] INT IDENTITY(1,1) NOT NULL PRIMARY KEY,
    [UserName] NVARCHAR(255) NULL DEFAULT '',
    [Password] NVARCHAR(MAX) NULL DEFAULT '',
    [SecurityRights] NVARCHAR(256) NULL DEFAULT ''
);
GO
CREATE TABLE [System] (
    [Ref] INT NULL,
    [SystemValue] NVARCHAR(MAX) NULL DEFAULT ''
);
GO
CREATE TABLE [Version] (
    [DBVersion] FLOAT NULL
);
GO
SET IDENTITY_INSERT [Designation] ON;
INSERT INTO [Designation] ([Designation_ID], [Title], [ReferenceID]) VALUES (1, '', '');
SET IDENTITY_INSERT [Designation] OFF;
GO
SET IDENTITY_INSERT [City] ON;
INSERT INTO [City] ([City_ID], [City], [ReferenceID]) VALUES (1, '', '');
SET IDENTITY_INSERT [City] OFF;
GO
SET IDENTITY_INSERT [County] ON;
INSERT INTO [County] ([County_ID], [County], [ReferenceID]) VALUES (1, '', '');
SET IDENTITY_INSERT [County] OFF;
GO
SET IDENTITY_INSERT [Country] ON;
INSERT INTO [Country] ([Country_ID], [Country], [ReferenceID]) VALUES (1, '', '');
SET IDENTITY_INSERT [Country] OFF;
GO
SET IDENTITY_INSERT [EthnicGroup] ON;
INSERT INTO [EthnicGroup] ([Ethnic_ID], [Type], [ReferenceID]) VALUES (1, '', '');
SET IDENTITY_INSERT [EthnicGroup] OFF;
GO
SET IDENTITY_INSERT [Organisations] ON;
INSERT INTO [Organisations] ([OrganRef], [OrganName], [ReferenceID], [City], [County], [Country], [Board]) VALUES (1, '', '', 1, 1, 1, 0);
SET IDENTITY_INSERT [Organisations] OFF;
GO
SET IDENTITY_INSERT [Contacts] ON;
INSERT INTO [Contacts] ([ContactRef], [Cust_Forename], [Cust_Surname], [ReferenceID], [Cust_City], [Cust_County], [Cust_Country], [Cust_Designation], [Cust_Ethnicgroup], [Cust_DOB], [Cust_Sex], [OrganRef], [ContactContactRef]) VALUES (1, '', '', '', 1, 1, 1, 1, 1, 0, 0, 1, 1);
SET IDENTITY_INSERT [Contacts] OFF;
GO
SET IDENTITY_INSERT [Venues] ON;
INSERT INTO [Venues] ([VenueRef], [Description], [ReferenceID], [ChargeRate], [OrganRef]) VALUES (1, '', '', 0, 1);
SET IDENTITY_INSERT [Venues] OFF;
GO
SET IDENTITY_INSERT [ExamName] ON;
INSERT INTO [ExamName] ([ExamNameRef], [Name], [ReferenceID]) VALUES (1, '', '');
SET IDENTITY_INSERT [ExamName] OFF;
GO
SET IDENTITY_INSERT [ExamType] ON;
INSERT INTO [ExamType] ([ExamTypeRef], [Type], [ReferenceID]) VALUES (1, '', '');
SET IDENTITY_INSERT [ExamType] OFF;
GO
INSERT INTO [Version] ([DBVersion]) VALUES (3);
GO
CREATE INDEX [IX_Contacts_Cust_Surname] ON [Contacts] ([Cust_Surname]) INCLUDE ([Cust_Forename]);
GO
CREATE INDEX [IX_Contacts_Cust_Email] ON [Contacts] ([Cust_Email]);
GO
CREATE INDEX [IX_Contacts_Cust_City] ON [Contacts] ([Cust_City]);
GO
CREATE INDEX [IX_Contacts_Cust_County] ON [Contacts] ([Cust_County]);
GO
CREATE INDEX [IX_Contacts_Cust_Country] ON [Contacts] ([Cust_Country]);
GO
CREATE INDEX [IX_Contacts_Cust_Designation] ON [Contacts] ([Cust_Designation]);
GO
CREATE INDEX [IX_Contacts_Cust_Ethnicgroup] ON [Contacts] ([Cust_Ethnicgroup]);
GO
CREATE INDEX [IX_Contacts_OrganRef] ON [Contacts] ([OrganRef]);
GO
CREATE INDEX [IX_Contacts_ContactContactRef] ON [Contacts] ([ContactContactRef]);
GO
CREATE INDEX [IX_Designation_Title] ON [Designation] ([Title]);
GO
CREATE INDEX [IX_City_City] ON [City] ([City]);
GO
CREATE INDEX [IX_County_County] ON [County] ([County]);
GO
CREATE INDEX [IX_Country_Country] ON [Country] ([Country]);
GO
CREATE INDEX [IX_EthnicGroup_Type] ON [EthnicGroup] ([Type]);
GO
CREATE INDEX [IX_Concessions_Name] ON [Concessions] ([Name]);
GO
CREATE INDEX [IX_ContactConcession_ContactRef_ConcessionRef] ON [ContactConcession] ([ContactRef], [ConcessionRef]);
GO
CREATE INDEX [IX_ContactConcession_ConcessionRef] ON [ContactConcession] ([ConcessionRef]);
GO
CREATE INDEX [IX_GroupNames_Name] ON [GroupNames] ([Name]);
GO
CREATE INDEX [IX_GroupNames_LinkRef] ON [GroupNames] ([LinkRef]);
GO
CREATE INDEX [IX_LinkNames_LinkName] ON [LinkNames] ([LinkName]);
GO
CREATE INDEX [IX_Groups_ContactRef] ON [Groups] ([ContactRef]);
GO
CREATE INDEX [IX_Groups_LinkRef] ON [Groups] ([LinkRef]);
GO
CREATE INDEX [IX_Groups_GroupRef] ON [Groups] ([GroupRef]);
GO
CREATE INDEX [IX_RoleTypes_Name] ON [RoleTypes] ([Name]);
GO
CREATE INDEX [IX_ContactRoles_ContactRef] ON [ContactRoles] ([ContactRef]);
GO
CREATE INDEX [IX_ContactRoles_RoleTypeRef] ON [ContactRoles] ([RoleTypeRef]);
GO
CREATE INDEX [IX_Ref_ContactRef] ON [Ref] ([ContactRef]);
GO
CREATE INDEX [IX_Organisations_OrganName] ON [Organisations] ([OrganName]);
GO
CREATE INDEX [IX_Organisations_City] ON [Organisations] ([City]);
GO
CREATE INDEX [IX_Organisations_County] ON [Organisations] ([County]);
GO
CREATE INDEX [IX_Organisations_Country] ON [Organisations] ([Country]);
GO
CREATE INDEX [IX_OrganChars_OrganRef_ConcessionRef] ON [OrganChars] ([OrganRef], [ConcessionRef]);
GO
CREATE INDEX [IX_OrganChars_ConcessionRef] ON [OrganChars] ([ConcessionRef]);
GO
CREATE INDEX [IX_CustomAttributes_AttributeName] ON [CustomAttributes] ([AttributeName]);
GO
CREATE INDEX [IX_CustomAttributes_AppliesTo] ON [CustomAttributes] ([AppliesTo]);
GO
CREATE INDEX [IX_CustomAttributeValues_AttributeRef] ON [CustomAttributeValues] ([AttributeRef]);
GO
CREATE INDEX [IX_AppliedAttributes_AppliesToRef_RefSection] ON [AppliedAttributes] ([AppliesToRef], [RefSection]);
GO
CREATE INDEX [IX_AppliedAttributes_AttributeRef] ON [AppliedAttributes] ([AttributeRef]);
GO
CREATE INDEX [IX_AppliedAttributes_AttributeValueRef] ON [AppliedAttributes] ([AttributeValueRef]);
GO
CREATE INDEX [IX_Courses_Title] ON [Courses] ([Title]);
GO
CREATE INDEX [IX_CoursesHierarchy_Label] ON [CoursesHierarchy] ([Label]);
GO
CREATE INDEX [IX_CoursesHierarchy_Parent] ON [CoursesHierarchy] ([Parent]);
GO
CREATE INDEX [IX_CoursesRelationships_CourseRef] ON [CoursesRelationships] ([CourseRef]);
GO
CREATE INDEX [IX_CoursesRelationships_CourseHierarchyRef] ON [CoursesRelationships] ([CourseHierarchyRef]);
GO
CREATE INDEX [IX_CourseEvents_CourseRef_EventNo] ON [CourseEvents] ([CourseRef], [EventNo]);
GO
CREATE INDEX [IX_CourseEvents_EventNo] ON [CourseEvents] ([EventNo]);
GO
CREATE INDEX [IX_CourseEvents_EDate] ON [CourseEvents] ([EDate]);
GO
CREATE INDEX [IX_CourseCharNames_Name] ON [CourseCharNames] ([Name]);
GO
CREATE INDEX [IX_CourseChar_CourseRef] ON [CourseChar] ([CourseRef]);
GO
CREATE INDEX [IX_CourseChar_ConcessionRef] ON [CourseChar] ([ConcessionRef]);
GO
CREATE INDEX [IX_CourseStaff_CourseRef] ON [CourseStaff] ([CourseRef]);
GO
CREATE INDEX [IX_CourseStaff_ContactRef] ON [CourseStaff] ([ContactRef]);
GO
CREATE INDEX [IX_CourseStaff_RoleTypeRef] ON [CourseStaff] ([RoleTypeRef]);
GO
CREATE INDEX [IX_CourseVenues_CourseRef] ON [CourseVenues] ([CourseRef]);
GO
CREATE INDEX [IX_CourseVenues_VenueRef] ON [CourseVenues] ([VenueRef]);
GO
CREATE INDEX [IX_CourseFacilities_CourseRef] ON [CourseFacilities] ([CourseRef]);
GO
CREATE INDEX [IX_CourseFacilities_FacilityRef] ON [CourseFacilities] ([FacilityRef]);
GO
CREATE INDEX [IX_StaffEmployed_CourseRef_EventNo] ON [StaffEmployed] ([CourseRef], [EventNo]);
GO
CREATE INDEX [IX_StaffEmployed_EventNo] ON [StaffEmployed] ([EventNo]);
GO
CREATE INDEX [IX_StaffEmployed_ContactRef_EDate] ON [StaffEmployed] ([ContactRef], [EDate]);
GO
CREATE INDEX [IX_StaffEmployed_RoleTypeRef] ON [StaffEmployed] ([RoleTypeRef]);
GO
CREATE INDEX [IX_StaffEmployed_EDate] ON [StaffEmployed] ([EDate]);
GO
CREATE INDEX [IX_VenuesEmployed_CourseRef_EventNo] ON [VenuesEmployed] ([CourseRef], [EventNo]);
GO
CREATE INDEX [IX_VenuesEmployed_EventNo] ON [VenuesEmployed] ([EventNo]);
GO
CREATE INDEX [IX_VenuesEmployed_VenueRef_EDate] ON [VenuesEmployed] ([VenueRef], [EDate]);
GO
CREATE INDEX [IX_VenuesEmployed_EDate] ON [VenuesEmployed] ([EDate]);
GO
CREATE INDEX [IX_FacilitiesEmployed_CourseRef_EventNo] ON [FacilitiesEmployed] ([CourseRef], [EventNo]);
GO
CREATE INDEX [IX_FacilitiesEmployed_EventNo] ON [FacilitiesEmployed] ([EventNo]);
GO
CREATE INDEX [IX_FacilitiesEmployed_FacilityRef_EDate] ON [FacilitiesEmployed] ([FacilityRef], [EDate]);
GO
CREATE INDEX [IX_FacilitiesEmployed_EDate] ON [FacilitiesEmployed] ([EDate]);
GO
CREATE INDEX [IX_AttendanceRecord_CourseRef_EventNo] ON [AttendanceRecord] ([CourseRef], [EventNo]);
GO
CREATE INDEX [IX_AttendanceRecord_ContactRef] ON [AttendanceRecord] ([ContactRef]);
GO
CREATE INDEX [IX_AttendanceRecord_EventNo] ON [AttendanceRecord] ([EventNo]);
GO
CREATE INDEX [IX_Venues_Description] ON [Venues] ([Description]);
GO
CREATE INDEX [IX_Venues_OrganRef] ON [Venues] ([OrganRef]);
GO
CREATE INDEX [IX_Facilities_Name] ON [Facilities] ([Name]);
GO
CREATE INDEX [IX_Facilities_OrganRef] ON [Facilities] ([OrganRef]);
GO
CREATE INDEX [IX_ExclusionDates_DateFrom] ON [ExclusionDates] ([DateFrom]);
GO
CREATE INDEX [IX_Exam_ExamName] ON [Exam] ([ExamName]);
GO
CREATE INDEX [IX_Exam_ExamNameRef] ON [Exam] ([ExamNameRef]);
GO
CREATE INDEX [IX_Exam_ExamTypeRef] ON [Exam] ([ExamTypeRef]);
GO
CREATE INDEX [IX_Exam_OrganRef] ON [Exam] ([OrganRef]);
GO
CREATE INDEX [IX_Exam_VenueRef] ON [Exam] ([VenueRef]);
GO
CREATE INDEX [IX_ExamName_Name] ON [ExamName] ([Name]);
GO
CREATE INDEX [IX_ExamType_Type] ON [ExamType] ([Type]);
GO
CREATE INDEX [IX_CourseExams_CourseRef] ON [CourseExams] ([CourseRef]);
GO
CREATE INDEX [IX_CourseExams_ExamRef] ON [CourseExams] ([ExamRef]);
GO
CREATE INDEX [IX_StudentExams_CourseRef] ON [StudentExams] ([CourseRef]);
GO
CREATE INDEX [IX_StudentExams_ExamRef_ContactRef] ON [StudentExams] ([ExamRef], [ContactRef]);
GO
CREATE INDEX [IX_StudentExams_ContactRef] ON [StudentExams] ([ContactRef]);
GO
CREATE INDEX [IX_AwardNames_AwardName] ON [AwardNames] ([AwardName]);
GO
CREATE INDEX [IX_AwardNames_ReportRef] ON [AwardNames] ([ReportRef]);
GO
CREATE INDEX [IX_AwardNames_Board] ON [AwardNames] ([Board]);
GO
CREATE INDEX [IX_Awards_ExamRef] ON [Awards] ([ExamRef]);
GO
CREATE INDEX [IX_Awards_AwardRef] ON [Awards] ([AwardRef]);
GO
CREATE INDEX [IX_IssuedAwards_ContactRef] ON [IssuedAwards] ([ContactRef]);
GO
CREATE INDEX [IX_IssuedAwards_AwardRef] ON [IssuedAwards] ([AwardRef]);
GO
CREATE INDEX [IX_Audit_AwardsIssued_ContactRef] ON [Audit_AwardsIssued] ([ContactRef]);
GO
CREATE INDEX [IX_Audit_AwardsIssued_AwardRef] ON [Audit_AwardsIssued] ([AwardRef]);
GO
CREATE INDEX [IX_StudentsEnrolled_CourseRef_ContactRef] ON [StudentsEnrolled] ([CourseRef], [ContactRef]);
GO
CREATE INDEX [IX_StudentsEnrolled_ContactRef] ON [StudentsEnrolled] ([ContactRef]);
GO
CREATE INDEX [IX_StudentsEnrolled_ConcessionType] ON [StudentsEnrolled] ([ConcessionType]);
GO
CREATE INDEX [IX_Transactions_CourseRef_ContactRef] ON [Transactions] ([CourseRef], [ContactRef]);
GO
CREATE INDEX [IX_Transactions_ContactRef] ON [Transactions] ([ContactRef]);
GO
CREATE INDEX [IX_Transactions_CreditCardRef] ON [Transactions] ([CreditCardRef]);
GO
CREATE INDEX [IX_Transactions_DateTrn] ON [Transactions] ([DateTrn]);
GO
CREATE INDEX [IX_CreditCardTransaction_CourseRef_ContactRef] ON [CreditCardTransaction] ([CourseRef], [ContactRef]);
GO
CREATE INDEX [IX_CreditCardTransaction_ContactRef] ON [CreditCardTransaction] ([ContactRef]);
GO
CREATE INDEX [IX_WaitingList_CourseRef_ContactRef] ON [WaitingList] ([CourseRef], [ContactRef]);
GO
CREATE INDEX [IX_WaitingList_ContactRef] ON [WaitingList] ([ContactRef]);
GO
CREATE INDEX [IX_Reports_ReportName] ON [Reports] ([ReportName]);
GO
CREATE INDEX [IX_ReportHierarchy_Label] ON [ReportHierarchy] ([Label]);
GO
CREATE INDEX [IX_ReportHierarchy_Parent] ON [ReportHierarchy] ([Parent]);
GO
CREATE INDEX [IX_ReportRelationships_ReportRef] ON [ReportRelationships] ([ReportRef]);
GO
CREATE INDEX [IX_ReportRelationships_ReportHierarchyRef] ON [ReportRelationships] ([ReportHierarchyRef]);
GO
CREATE INDEX [IX_Users_UserName] ON [Users] ([UserName]);
GO
