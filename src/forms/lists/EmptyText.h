#pragma once

#include <QString>

class QAbstractItemView;

/// What a list or a tree says while it has no rows.
class EmptyText final
{
public:
    explicit EmptyText(QAbstractItemView *view);

    void Set(const QString &text);
    /// To be called at the end of the view's paintEvent.
    void Paint() const;

private:
    QAbstractItemView *m_view;
    QString m_text = QStringLiteral("Nothing to show.");
};
