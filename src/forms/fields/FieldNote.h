#pragma once

#include <QObject>

class QLabel;
class QLineEdit;

/// A word at the right end of a text field, after what is typed: "no match", "new town". It takes no room in
/// the layout, and the text of the field stops before it.
class FieldNote final : public QObject
{
    Q_OBJECT

public:
    enum class Tone { Quiet, Warning };

    explicit FieldNote(QLineEdit *field);

    /// Shows the word; a warning tints the field as well. An empty text takes both away.
    void Show(const QString &text, Tone tone = Tone::Quiet);
    QString Text() const;

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void Tint(bool tinted);
    void Place();
    void KeepFree(int width);

    QLineEdit *m_field;
    QLabel *m_label;
    bool m_tinted = false;
};
