#include "forms/ProgressBox.h"

#include "forms/FormBuilder.h"
#include "forms/ProgressBar.h"
#include "platform/Dialogs.h"

#include <QApplication>

namespace
{
constexpr qint64 shownAfter = 300; // milliseconds
}

ProgressBox::ProgressBox(QWidget *form, const QString &title)
    : QDialog(form)
    , m_bar(new ProgressBar)
    , m_progress(m_bar->NewRun())
{
    setObjectName(QStringLiteral("ProgressBox"));
    setWindowTitle(title);
    setModal(true);
    FormBuilder builder(this);
    builder.Place(m_bar, QStringLiteral("ProgBar"), QStringLiteral("Progress:"));
    m_bar->setMinimumWidth(40 * fontMetrics().averageCharWidth());
    builder.BeginButtons();
    connect(builder.Button(QStringLiteral("CancelBtn"), QStringLiteral("&Cancel")), &QPushButton::clicked,
            this, &ProgressBox::reject);
    builder.EndButtons();
    connect(m_bar, &ProgressBar::Shown, this, &ProgressBox::ShowIfLong);
    m_since.start();
    qApp->installEventFilter(this);
}

bool ProgressBox::Run(QWidget *form, const QString &title,
                      const std::function<void(Progress &progress)> &work)
{
    ProgressBox box(form, title);
    work(box.m_progress);
    return !box.m_progress.IsCancelled();
}

bool ProgressBox::Run(QWidget *form, const QString &title, const QString &rows, const QString &stopped,
                      const std::function<void(Progress &progress)> &work)
{
    int done = 0;
    int all = 0;
    const bool finished = Run(form, title, [&](Progress &progress) {
        work(progress);
        done = progress.Value();
        all = progress.Maximum();
    });
    if (finished || done == all)
        return true;
    Dialogs::MsgBox(u"Stopped after " % QString::number(done) % u" of " % QString::number(all) % u' ' % rows %
                        u". " % stopped,
                    title, Dialogs::Buttons::Ok, Dialogs::Icon::Information);
    return false;
}

/// The run ends behind the row that it is at, and the box with it.
void ProgressBox::reject()
{
    m_progress.Cancel();
}

/// Nothing on the form may start a second run before the box stands before it.
bool ProgressBox::eventFilter(QObject *, QEvent *event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::Shortcut:
    case QEvent::Close: {
        const QWidget *modal = QApplication::activeModalWidget();
        return !isVisible() && (!modal || modal == parentWidget()->window());
    }
    default:
        return false;
    }
}

void ProgressBox::ShowIfLong(int done, int maximum)
{
    if (!isVisible() && done < maximum && m_since.elapsed() >= shownAfter)
        show();
}
