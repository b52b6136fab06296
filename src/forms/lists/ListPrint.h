#pragma once

#include <QString>

#include <functional>
#include <vector>

class ListModel;
class ListView;
class QPagedPaintDevice;

/// Lists on paper: the columns side by side under their titles, which every page has again, and the number
/// of the page.
namespace ListPrint
{
/// Called before each page; false stops there.
using EachPage = std::function<bool(int page, int pages)>;

/// Prints rows of a list, in their order. `title` heads each page. False where it was stopped or the device
/// cannot be drawn on.
bool Print(const ListModel &list, const std::vector<int> &rows, const QString &title,
           QPagedPaintDevice &device, const EachPage &eachPage = {});
/// Asks for a printer and prints a list on it, or of several selected rows those, if the user wants that.
void Ask(const ListModel &list, ListView *view);
} // namespace ListPrint
