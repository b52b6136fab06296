#include "core/shell/StartPage.h"

#include "core/shell/RecentDatabases.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace
{
QLabel *Heading(const QString &text, qreal scale)
{
    auto *heading = new QLabel(text);
    QFont large = heading->font();
    large.setPointSizeF(large.pointSizeF() * scale);
    heading->setFont(large);
    heading->setContentsMargins(0, 2 * heading->fontMetrics().descent(), 0, heading->fontMetrics().descent());
    return heading;
}

QPushButton *AddButton(QVBoxLayout *column, const QString &name, const QString &caption)
{
    auto *button = new QPushButton(caption);
    button->setObjectName(name);
    button->setAutoDefault(false);
    column->addWidget(button);
    return button;
}
} // namespace

StartPage::StartPage(QWidget *parent)
    : QWidget(parent)
    , m_column(new QVBoxLayout)
    , m_recent(new QVBoxLayout)
{
    setObjectName(QStringLiteral("StartPage"));
    m_column->addWidget(Heading(QStringLiteral("No database is open"), 1.6));
    QPushButton *open =
        AddButton(m_column, QStringLiteral("StartOpenBtn"), QStringLiteral("&Open a database…"));
    QPushButton *make =
        AddButton(m_column, QStringLiteral("StartNewBtn"), QStringLiteral("&Make a new one…"));
    connect(open, &QPushButton::clicked, this, &StartPage::OpenAsked);
    connect(make, &QPushButton::clicked, this, &StartPage::NewAsked);
    m_column->addLayout(m_recent);
    auto *middle = new QHBoxLayout;
    middle->addStretch();
    middle->addLayout(m_column);
    middle->addStretch();
    auto *page = new QVBoxLayout(this);
    page->addStretch(2);
    page->addLayout(middle);
    page->addStretch(3);
    setFocusProxy(open);
}

void StartPage::Offer(const QStringList &files)
{
    while (QLayoutItem *item = m_recent->takeAt(0)) {
        item->widget()->deleteLater();
        delete item;
    }
    if (files.isEmpty())
        return;
    m_recent->addWidget(Heading(QStringLiteral("Opened last"), 1));
    for (int i = 0; i < files.size(); ++i) {
        QPushButton *button = AddButton(m_recent, u"Recent_" % QString::number(i + 1),
                                        RecentDatabases::Caption(i, files.at(i)));
        connect(button, &QPushButton::clicked, this, [this, file = files.at(i)] { emit FileAsked(file); });
    }
}
