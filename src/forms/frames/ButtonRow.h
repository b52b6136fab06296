#pragma once

#include <QHBoxLayout>

#include <memory>

/// A row of buttons of one width, that of its widest caption.
class ButtonRow final : public QHBoxLayout
{
public:
    /// The buttons of rows below each other have one width; `above` is null for the first.
    explicit ButtonRow(const ButtonRow *above = nullptr);
    ~ButtonRow() override;

    void invalidate() override;

private:
    QList<QWidget *> Buttons() const;

    std::shared_ptr<QList<const ButtonRow *>> m_rows;
};
