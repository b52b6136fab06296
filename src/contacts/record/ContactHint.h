#pragma once

#include <QStringList>
#include <QTimer>
#include <QWidget>

class QLabel;
class QLineEdit;
class QPushButton;

/// A quiet line that tells, while a new person is typed, who of that name or e-mail address is on file
/// already, with a button to open them. It waits for a pause in the typing, and is never in the way of the
/// keys.
class ContactHint final : public QWidget
{
    Q_OBJECT

public:
    /// The fields that a person is known by.
    struct Fields {
        QLineEdit *forename;
        QLineEdit *surname;
        QLineEdit *email;
    };

    explicit ContactHint(const Fields &fields, QWidget *parent = nullptr);

    /// Off, the line goes: a record that is saved gets no hint.
    void Watch(bool on);

signals:
    void Opened(const QStringList &keys);

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void Look();
    void ShowText();

    Fields m_fields;
    QTimer m_pause;
    QString m_text;
    QStringList m_keys;
    QLabel *m_line;
    QPushButton *m_viewBtn;
};
