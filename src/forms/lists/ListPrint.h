#pragma once

#include <QString>

#include <functional>
#include <vector>

class ListModel;
class ListView;
class QPagedPaintDevice;
class QWidget;

/// Prints lists: the columns side by side under their titles, which are repeated on every page, and the page
/// number.
namespace ListPrint
{
/// Called before each page; returns false to stop there.
using EachPage = std::function<bool(int page, int pages)>;

/// Prints rows of a list, in their order. `title` is at the top of each page. False if it was stopped or the
/// device cannot be drawn on.
bool Print(const ListModel &list, const std::vector<int> &rows, const QString &title,
           QPagedPaintDevice &device, const EachPage &eachPage = {});
/// Asks for a printer and prints a list on it, or only the selected rows if several are selected and the user
/// wants that.
void Ask(const ListModel &list, ListView *view);
/// Lets Ctrl+P print the list of the form that has the focus, or else the first that shows any rows.
void BindKey(QWidget *form);
} // namespace ListPrint
