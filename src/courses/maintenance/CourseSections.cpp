#include "courses/maintenance/CourseSections.h"

#include "assessments/ExamListODBC.h"
#include "contacts/lists/ContactListODBC.h"
#include "controls/ListModel.h"
#include "courses/lists/CourseListODBC.h"
#include "courses/maintenance/ExclusionODBC.h"
#include "courses/maintenance/ResourceODBC.h"
#include "database/statements/DeletedMeanwhile.h"
#include "database/values/DecodeDateFunc.h"

#include <algorithm>
#include <array>

namespace
{
const QString itemExists = QStringLiteral("Item already exists in database.");
const QString updateItem = QStringLiteral("Update Item");

bool FillPeriods(ListModel &list)
{
    const auto periods = ADO_Course_FillExclusionDates();
    std::vector<ListItem> items;
    for (const ExclusionPeriod &period : periods.value_or(std::vector<ExclusionPeriod>()))
        items.push_back({u'!' % SqlNumber(period.excludeRef),
                         period.referenceID,
                         {IntToDateText(int(period.from)), IntToDateText(int(period.to))}});
    list.Fill(std::move(items));
    return periods.has_value();
}
} // namespace

std::span<const CourseSectionInfo> CourseSections()
{
    static const std::array<CourseSectionInfo, 8> sections{{
        {CourseSection::Characteristics,
         QStringLiteral("Characteristics"),
         {QStringLiteral("CourseCharNames"), QStringLiteral("ConcessionRef"), QStringLiteral("Name")},
         QStringLiteral("characteristic"),
         Right::OfferedCharacteristics},
        {CourseSection::AssessmentSubjects,
         QStringLiteral("Assessment Subjects"),
         {QStringLiteral("ExamName"), QStringLiteral("ExamNameRef"), QStringLiteral("Name")},
         QStringLiteral("subject"),
         Right::AssessmentSubjects},
        {CourseSection::AssessmentTypes,
         QStringLiteral("Assessment Types"),
         {QStringLiteral("ExamType"), QStringLiteral("ExamTypeRef"), QStringLiteral("Type")},
         QStringLiteral("type"),
         Right::AssessmentTypes},
        {CourseSection::Awards,
         QStringLiteral("Awards"),
         {QStringLiteral("AwardNames"), QStringLiteral("AwardRef"), QStringLiteral("AwardName")},
         QStringLiteral("award"),
         Right::Awards},
        {CourseSection::Venues,
         QStringLiteral("Venues"),
         {QStringLiteral("Venues"), QStringLiteral("VenueRef"), QStringLiteral("Description")},
         QStringLiteral("venue"),
         Right::Venues},
        {CourseSection::Facilities,
         QStringLiteral("Facilities"),
         {QStringLiteral("Facilities"), QStringLiteral("FacilityRef"), QStringLiteral("Name")},
         QStringLiteral("facility"),
         Right::Facilities},
        {CourseSection::Assessments,
         QStringLiteral("Assessments"),
         {QStringLiteral("Exam"), QStringLiteral("ExamRef"), QStringLiteral("ExamName")},
         QStringLiteral("assessment"),
         Right::Assessments},
        {CourseSection::ExcludeDates,
         QStringLiteral("Exclude Dates"),
         {QStringLiteral("ExclusionDates"), QStringLiteral("ExcludeRef"), QStringLiteral("ReferenceID")},
         QStringLiteral("period"),
         Right::FreeDates},
    }};
    return sections;
}

const CourseSectionInfo &CourseSectionOf(CourseSection code)
{
    return *std::ranges::find(CourseSections(), code, &CourseSectionInfo::code);
}

QStringList Course_Columns(CourseSection code)
{
    if (code == CourseSection::ExcludeDates)
        return {QStringLiteral("Reference ID"), QStringLiteral("Exclude From"), QStringLiteral("Exclude To")};
    return {CourseSectionOf(code).caption};
}

bool Course_FillItems(CourseSection code, ListModel &list)
{
    const CourseItemTable &table = CourseSectionOf(code).table;
    return code == CourseSection::ExcludeDates
               ? FillPeriods(list)
               : ADO_Course_FillList2(list, table.nameColumn, table.keyColumn, table.table);
}

ReadRow<RefLabel> Course_ViewItem(CourseSection code, int key)
{
    const CourseItemTable &table = CourseSectionOf(code).table;
    return ADO_ViewItem(key, table.keyColumn, table.nameColumn, table.table);
}

int Course_AddItem(CourseSection code, const RefLabel &item)
{
    return TellDuplicate(
        ADO_Course_AddItem(CourseSectionOf(code).table, SqlSafeText(item.name), SqlSafeText(item.reference)),
        itemExists, QStringLiteral("Add Item"));
}

int Course_UpdateItem(CourseSection code, int key, const RefLabel &item)
{
    const auto &[section, caption, table, word, right] = CourseSectionOf(code);
    const int living = LivingKey(table.table, table.keyColumn, key, word, updateItem);
    return living < 1 ? living
                      : TellDuplicate(ADO_Course_UpdateItem(table, key, SqlSafeText(item.name),
                                                            SqlSafeText(item.reference)),
                                      itemExists, updateItem);
}

bool Course_DeleteItem(CourseSection code, int key)
{
    switch (code) {
    case CourseSection::Characteristics:
        return ADO_Course_DeleteConcession(ConcessionRef(key));
    case CourseSection::Venues:
        return ADO_Course_DeleteVenue(VenueRef(key));
    case CourseSection::Facilities:
        return ADO_Course_DeleteFacility(FacilityRef(key));
    case CourseSection::AssessmentTypes:
        return ADO_Course_DeleteExamType(key);
    case CourseSection::AssessmentSubjects:
        return ADO_Course_DeleteExamName(key);
    case CourseSection::Awards:
        return ADO_Course_DeleteExamAward(key);
    case CourseSection::Assessments:
        return ADO_Course_DeleteExam(ExamRef(key));
    case CourseSection::ExcludeDates:
        return ADO_Course_DeleteExclusionDate(key);
    }
    return false;
}
