#include "forms/frames/FormSize.h"

#include "forms/frames/WindowMemory.h"
#include "forms/lists/ListView.h"

#include <QEvent>
#include <QHeaderView>
#include <QMdiSubWindow>
#include <QScreen>

namespace
{
class Keeper final : public QObject
{
public:
    explicit Keeper(QWidget *form)
        : QObject(form)
        , m_form(form)
    {
        form->installEventFilter(this);
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (watched == m_form && event->type() == QEvent::Show && !m_restored) {
            m_restored = true;
            Restore();
        } else if (watched == m_form && event->type() == QEvent::Hide && m_restored) {
            Store();
        }
        return QObject::eventFilter(watched, event);
    }

private:
    /// The size of a child window of the main window is that of the frame around it.
    QWidget *Frame() const
    {
        auto *frame = qobject_cast<QMdiSubWindow *>(m_form->parentWidget());
        return frame ? frame : m_form;
    }

    void Restore()
    {
        const QVariantMap settings = WindowMemory::Recall(m_form->objectName());
        const QSize size = settings.value(QStringLiteral("size")).toSize();
        if (size.isValid() && m_form->screen())
            Frame()->resize(
                size.expandedTo(Frame()->minimumSizeHint()).boundedTo(m_form->screen()->availableSize()));
        for (ListView *list : m_form->findChildren<ListView *>()) {
            const QVariantList widths = settings.value(list->objectName()).toList();
            if (widths.size() != list->header()->count())
                continue;
            for (int column = 0; column < widths.size(); ++column) {
                if (widths.at(column).toInt() > 0)
                    list->header()->resizeSection(column, widths.at(column).toInt());
            }
        }
    }

    void Store() const
    {
        if (m_form->objectName().isEmpty())
            return;
        QVariantMap settings = WindowMemory::Recall(m_form->objectName());
        if (!Frame()->isMaximized() && !Frame()->isMinimized())
            settings.insert(QStringLiteral("size"), Frame()->size());
        for (const ListView *list : m_form->findChildren<ListView *>()) {
            QVariantList widths;
            for (int column = 0; column < list->header()->count(); ++column)
                widths.append(list->header()->sectionSize(column));
            if (list->isVisibleTo(m_form) && !list->objectName().isEmpty())
                settings.insert(list->objectName(), widths);
        }
        WindowMemory::Store(m_form->objectName(), settings);
    }

    QWidget *m_form;
    bool m_restored = false;
};
} // namespace

void FormSize::Remember(QWidget *form)
{
    new Keeper(form);
}
