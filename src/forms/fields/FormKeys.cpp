#include "forms/fields/FormKeys.h"

#include <QAbstractButton>
#include <QPointer>
#include <QShortcut>

namespace
{
class ButtonKey final : public QShortcut
{
public:
    ButtonKey(const QKeySequence &key, QWidget *form, QAbstractButton *button)
        : QShortcut(key, form)
        , m_button(button)
    {
        setContext(Qt::WidgetWithChildrenShortcut);
        connect(this, &QShortcut::activated, button, [this] {
            if (Serves())
                m_button->click();
        });
    }
    bool Serves() const { return m_button && m_button->isEnabled() && m_button->isVisible(); }

private:
    QPointer<QAbstractButton> m_button;
};

QShortcut *Find(const QWidget *form, const QKeySequence &key)
{
    for (QShortcut *shortcut : form->findChildren<QShortcut *>()) {
        if (shortcut->key() == key && shortcut->isEnabled())
            return shortcut;
    }
    return nullptr;
}
} // namespace

void FormKeys::Bind(QWidget *form, const QKeySequence &key, QAbstractButton *button, const QString &what)
{
    new ButtonKey(key, form, button);
    QString tip = what.isEmpty() ? button->toolTip() : what;
    if (tip.isEmpty())
        tip = button->text().remove(u'&');
    button->setToolTip(tip % u" (" % key.toString(QKeySequence::NativeText) % u')');
}

QKeySequence FormKeys::StandardKey(const QString &caption)
{
    if (caption.startsWith(u"New "))
        return QKeySequence::New;
    if (caption == u"Refresh")
        return Qt::Key_F5;
    return {};
}

bool FormKeys::Serves(const QWidget *form, const QKeySequence &key)
{
    const QShortcut *shortcut = Find(form, key);
    const auto *ofButton = dynamic_cast<const ButtonKey *>(shortcut);
    return ofButton ? ofButton->Serves() : shortcut != nullptr;
}

void FormKeys::Press(const QWidget *form, const QKeySequence &key)
{
    if (QShortcut *shortcut = Find(form, key))
        emit shortcut->activated();
}
