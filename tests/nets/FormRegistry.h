#pragma once

#include <QStringList>
#include <QWidget>

#include <functional>
#include <memory>
#include <vector>

/// How a form is opened and what it promises; the nets run over every entry.
struct FormEntry {
    QString name; ///< object name, with what tells two entries of one form apart after a blank
    std::function<std::unique_ptr<QWidget>()> open;
    /// Holds a record: Escape asks once this field was changed. "" for forms that hold none.
    QString recordField{};
    /// With every right at the level "view", all fields are locked but these. Nothing where rights do not
    /// reach into the form.
    std::optional<QStringList> freeFields{};
    /// Letters that two of its captions have as their mnemonic; the key then goes from one to the other.
    QString sharedMnemonics{};
};

/// Every form of the program. They open on the database that FillForms has filled.
const std::vector<FormEntry> &FormRegistry();
/// A user, two people, a characteristic, an attribute, a course with a student and an event, in the session's
/// fresh database.
void FillForms();
