#pragma once

#include <QStringList>

#include <functional>

class ListModel;
class QWidget;

/// Screens that are opened by a screen of another subject, where an include would point upwards or make a
/// cycle.
namespace OtherScreens
{
struct Openers {
    /// The record form for a list of organisations ("?" keys), modal, opened for changing.
    std::function<void(const QStringList &keys, QWidget *parent)> organisations;
    /// The picker of people, modal: those picked are added to `people`.
    std::function<void(ListModel &people, QWidget *parent)> pickPeople;
    /// The contact reports, modal; `arePeopleSelected` tells whether the caller has published a selection of
    /// people for them.
    std::function<void(bool arePeopleSelected, QWidget *parent)> contactReports;
    /// What is open to a user with those rights, modal and only to look at.
    std::function<void(const QString &user, const QString &rights, QWidget *parent)> whatUserMayDo;
    /// The course reports, modal.
    std::function<void(QWidget *parent)> courseReports;
};

/// All are set at the start of the program, by Screens::Install.
Openers &Installed();
} // namespace OtherScreens
