#include "courses/record/CharacteristicsPage.h"

#include "courses/maintenance/frmCourseMainAddEdit.h"
#include "courses/record/CourseVersion.h"
#include "database/statements/Security.h"
#include "forms/fields/FieldLock.h"
#include "forms/fields/ModifiedMark.h"
#include "forms/fields/UsedAvailable.h"
#include "forms/frames/FormBuilder.h"

CharacteristicsPage::CharacteristicsPage(QWidget *parent)
    : QWidget(parent)
{
    FormBuilder form(this);
    FormBuilder::PairNames names;
    names.available = QStringLiteral("AvailChar");
    names.availableCaption = QStringLiteral("Ava&ilable:");
    names.used = QStringLiteral("UsedChar");
    names.usedCaption = QStringLiteral("App&lied to this course:");
    const FormBuilder::Pair pair = form.UsedAvailablePair(names, m_available, m_used);
    pair.available->SetEmptyText(QStringLiteral("No further characteristics."));
    pair.used->SetEmptyText(QStringLiteral("No characteristics applied."));
    m_moves = pair.moves;
    m_new = form.Button(QStringLiteral("NewCBtn"), QStringLiteral("New C&haracteristic"));
    connect(m_new, &QPushButton::clicked, this, &CharacteristicsPage::NewCharacteristic);
}

bool CharacteristicsPage::Show(const QStringList &offered)
{
    return Course_ShowCharacteristics(offered, m_available, m_used);
}

void CharacteristicsPage::Allow(bool open)
{
    m_mayApply = open && UserMay(Right::CourseCharacteristics, Level::Full);
    m_moves->Allow(m_mayApply);
    m_new->setEnabled(open && UserMay(CourseSectionOf(CourseSection::Characteristics).right, Level::Add));
}

void CharacteristicsPage::Watch(ModifiedMark &modified)
{
    modified.Watch(m_used);
}

void CharacteristicsPage::NewCharacteristic()
{
    frmCourseMainAddEdit form(CourseSection::Characteristics, this);
    const int added = form.Run();
    if (added > 0)
        (m_mayApply ? m_used : m_available)
            .Add({u'!' % SqlNumber(added), FormatRefLabel(form.Item().reference, form.Item().name)});
}
