#include "enrolment/frmPercent.h"

#include "forms/frames/AskingWindow.h"
#include "forms/frames/FormBuilder.h"

#include <algorithm>

frmPercent::frmPercent(const QStringList &titles, QWidget *parent)
    : FormDialog(QStringLiteral("frmPercent"), QStringLiteral("Discount Change"), parent)
{
    // The courses keep their order and are known by their position: one may be listed more than once.
    std::vector<ListItem> items;
    items.reserve(static_cast<size_t>(titles.size()));
    for (int position = 0; position < titles.size(); ++position)
        items.push_back({u'?' % QString::number(position), titles.at(position)});
    m_courses.SetColumns({QStringLiteral("Course")});
    m_courses.Fill(std::move(items));

    FormBuilder form(this);
    form.List(QStringLiteral("CourseList"), QStringLiteral("Select Courses to make changes, if any:"),
              m_courses, ListView::Choice::Multi);
    form.BeginButtons();
    QPushButton *apply = form.DefaultButton(QStringLiteral("OkBtn"), QStringLiteral("&Apply"));
    form.EndButtons();
    connect(apply, &QPushButton::clicked, this, &frmPercent::accept);
    resize(fontMetrics().averageCharWidth() * 60, sizeHint().height());
}

QList<int> frmPercent::Choose(const QStringList &titles)
{
    frmPercent form(titles, AskingWindow());
    QList<int> positions;
    if (form.exec() == QDialog::Accepted) {
        for (const QString &key : form.m_courses.SelectedKeys())
            positions.append(KeyNumber(key));
    }
    std::sort(positions.begin(), positions.end());
    return positions;
}
