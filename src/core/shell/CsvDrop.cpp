#include "core/shell/CsvDrop.h"

#include <QApplication>
#include <QDropEvent>
#include <QFileInfo>
#include <QMimeData>
#include <QTimer>
#include <QUrl>
#include <QWidget>

namespace
{
/// The one CSV file that is dragged; "" if it is anything else.
QString FileIn(const QMimeData *data)
{
    const QList<QUrl> urls = data->urls();
    const QString file = urls.size() == 1 ? urls.first().toLocalFile() : QString();
    const QString kind = QFileInfo(file).suffix();
    const bool isCsv =
        kind.compare(u"csv", Qt::CaseInsensitive) == 0 || kind.compare(u"txt", Qt::CaseInsensitive) == 0;
    return isCsv ? file : QString();
}
} // namespace

CsvDrop::CsvDrop(QWidget *window, std::function<bool()> mayDrop, std::function<void(const QString &)> dropped)
    : QObject(window)
    , m_mayDrop(std::move(mayDrop))
    , m_dropped(std::move(dropped))
{
    window->setAcceptDrops(true);
    window->installEventFilter(this);
}

bool CsvDrop::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::DragEnter && event->type() != QEvent::Drop)
        return QObject::eventFilter(watched, event);
    auto *drop = static_cast<QDropEvent *>(event);
    const QString file = FileIn(drop->mimeData());
    if (file.isEmpty() || !m_mayDrop() || QApplication::activeModalWidget())
        return QObject::eventFilter(watched, event);
    drop->acceptProposedAction();
    // The program that the file comes from waits until the drop is over.
    if (event->type() == QEvent::Drop)
        QTimer::singleShot(0, this, [this, file] { m_dropped(file); });
    return true;
}
