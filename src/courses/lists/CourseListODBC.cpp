#include "courses/lists/CourseListODBC.h"

#include "controls/ListModel.h"
#include "database/statements/MiscODBC.h"
#include "database/values/GlobalCode.h"

bool ADO_Course_FillList2(ListModel &list, const QString &nameColumn, const QString &keyColumn,
                          const QString &table)
{
    return Reported("ADO_Course_FillList2", false, [&] {
        list.Clear();
        std::vector<ListItem> items;
        for (const Recordset::Row row :
             OpenRecordset(u"SELECT ReferenceID, " % nameColumn % u", " % keyColumn % u" FROM " % table %
                           u" ORDER BY " % nameColumn % u" ASC")) {
            const QString name = row.Text(nameColumn);
            if (!name.isEmpty())
                items.push_back({u'!' % row.Text(keyColumn), FormatRefLabel(row.Text(u"ReferenceID"), name)});
        }
        list.Fill(std::move(items));
        return true;
    });
}

QString ADO_Course_Title(CourseRef courseRef)
{
    return Reported("ADO_Course_Title", QString(), [&] {
        const Recordset course =
            OpenRecordset(u"SELECT Title FROM Courses WHERE CourseRef = " % SqlNumber(courseRef));
        return course.IsEmpty() ? QString() : course.First().Text(u"Title");
    });
}
