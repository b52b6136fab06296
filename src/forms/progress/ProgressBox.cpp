#include "forms/progress/ProgressBox.h"

#include "forms/progress/ModalFront.h"
#include "forms/progress/ProgressBar.h"
#include "platform/desktop/Dialogs.h"

#include <QApplication>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

namespace
{
constexpr qint64 shownAfter = 300; // milliseconds

/// Events that change the focus or the state of a whole window before its widgets are told. The release of a
/// mouse button is let through, since the toolkit would wait for it.
bool StartsInput(const QEvent &event)
{
    switch (event.type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ContextMenu:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TabletPress:
    case QEvent::NativeGesture:
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
    case QEvent::Close:
        return true;
    default:
        return false;
    }
}

bool IsInput(const QEvent &event)
{
    switch (event.type()) {
    case QEvent::MouseButtonRelease:
    case QEvent::MouseMove:
    case QEvent::InputMethod:
    case QEvent::Shortcut:
    case QEvent::ShortcutOverride:
        return true;
    default:
        return StartsInput(event);
    }
}
} // namespace

ProgressBox::ProgressBox(QWidget *form, const QString &title)
    : QDialog(form)
    , m_bar(new ProgressBar)
    , m_progress(m_bar->NewRun())
    , m_frontBefore(QApplication::activeModalWidget())
{
    setObjectName(QStringLiteral("ProgressBox"));
    setWindowTitle(title);
    setModal(true);
    m_bar->setObjectName(QStringLiteral("ProgBar"));
    m_bar->setMinimumWidth(40 * fontMetrics().averageCharWidth());
    auto *cancel = new QPushButton(QStringLiteral("&Cancel"));
    cancel->setObjectName(QStringLiteral("CancelBtn"));
    cancel->setAutoDefault(false);
    connect(cancel, &QPushButton::clicked, this, &ProgressBox::reject);
    auto *grid = new QGridLayout(this);
    grid->addWidget(new QLabel(QStringLiteral("Progress:")), 0, 0);
    grid->addWidget(m_bar, 0, 1);
    grid->setRowMinimumHeight(1, fontMetrics().height() / 2);
    grid->addWidget(cancel, 2, 0, 1, 2, Qt::AlignRight);
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

/// The run ends after its current row, and the box with it.
void ProgressBox::reject()
{
    m_progress.Cancel();
}

/// Only painting gets through during a run, except to this box and to the questions of the run: what the run
/// reads must not change under it, and nothing may start a second run.
bool ProgressBox::eventFilter(QObject *watched, QEvent *event)
{
    const bool isWindow = watched->isWindowType();
    if (!(isWindow ? StartsInput(*event) : IsInput(*event)))
        return false;
    const QWidget *front = QApplication::activeModalWidget();
    if (front && front != m_frontBefore && ModalFront::Holds(front, watched))
        return false;
    event->ignore();
    return true;
}

void ProgressBox::ShowIfLong(int done, int maximum)
{
    if (!isVisible() && done < maximum && m_since.elapsed() >= shownAfter)
        show();
}
