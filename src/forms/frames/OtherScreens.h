#pragma once

#include <QStringList>

#include <functional>

class ListModel;
class QWidget;

/// The screens that a screen of another subject opens, where an include would point up or round in a circle.
namespace OtherScreens
{
struct Openers {
    /// The record form on a list of organisations ("?" keys), modal, for changing.
    std::function<void(const QStringList &keys, QWidget *parent)> organisations;
    /// The picker, modal: who is picked joins `people`.
    std::function<void(ListModel &people, QWidget *parent)> pickPeople;
    /// The contact reports, modal; `arePeopleSelected` is whether the caller has published a selection of
    /// people for them.
    std::function<void(bool arePeopleSelected, QWidget *parent)> contactReports;
    /// The course reports, modal.
    std::function<void(QWidget *parent)> courseReports;
};

/// All are set at the start of the program, by Screens::Install.
Openers &Installed();
} // namespace OtherScreens
