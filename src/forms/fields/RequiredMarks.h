#pragma once

#include <QObject>

#include <vector>

class CaptionLabel;
class QComboBox;
class QLineEdit;
class QPlainTextEdit;

/// The required fields of a form: their captions are marked while they are empty, and the marked captions
/// form the list that stops a save. Except for passwords, a text of only blanks counts as empty.
class RequiredMarks final : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// From now on marks `label` while the field's text is empty.
    void Add(CaptionLabel *label, QLineEdit *field);
    void Add(CaptionLabel *label, QPlainTextEdit *field);
    void Add(CaptionLabel *label, QComboBox *field);
    /// Marks a label explicitly; one that was not added joins the list.
    void Mark(CaptionLabel *label, bool missing);

    /// One line for each marked caption: four blanks and the caption without its last character.
    QString MissingList() const;
    /// True if nothing is missing; otherwise the "Form not complete" box has been shown, and the first field
    /// that is missing has the focus.
    bool Complete() const;
    /// Takes the user back to the first required field, since a record that was refused is mostly one whose
    /// name exists.
    void FocusFirst() const;

private:
    std::vector<CaptionLabel *> m_labels;
};
