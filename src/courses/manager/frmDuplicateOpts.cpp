#include "courses/manager/frmDuplicateOpts.h"

#include "core/session/Session.h"
#include "forms/frames/FormBuilder.h"
#include "forms/frames/OkCancel.h"

frmDuplicateOpts::frmDuplicateOpts(QWidget *parent)
    : FormDialog(QStringLiteral("frmDuplicateOpts"), QStringLiteral("Duplicate Options"), parent)
{
    const std::array captions{
        QStringLiteral("Characteristics"), QStringLiteral("Events"),    QStringLiteral("Students Enrolled"),
        QStringLiteral("Staff"),           QStringLiteral("Hierarchy"), QStringLiteral("Facilities"),
        QStringLiteral("Venues")};
    FormBuilder form(this);
    form.BeginGroup(QStringLiteral("When copying a course, copy the following data:"));
    for (size_t bit = 0; bit < m_options.size(); ++bit) {
        m_options[bit] = form.Check(u"CopyChk_" % QString::number(bit), captions[bit]);
        m_options[bit]->setChecked(gDupCourseOpt & 1 << bit);
    }
    form.EndGroup();
    const OkCancel buttons = OkCancel::Add(form, this,
                                           {.ok = QStringLiteral("ExitBtn"),
                                            .cancel = QStringLiteral("CanBtn"),
                                            .okCaption = QStringLiteral("&Ok")});
    connect(buttons.ok, &QPushButton::clicked, this, &frmDuplicateOpts::Save);
}

void frmDuplicateOpts::Save()
{
    gDupCourseOpt = 0;
    for (size_t bit = 0; bit < m_options.size(); ++bit)
        gDupCourseOpt |= m_options[bit]->isChecked() ? 1 << bit : 0;
    accept();
}
