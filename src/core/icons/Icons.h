#pragma once

#include <QIcon>
#include <QString>

/// The pictures of the program. They come from the desktop's icon theme if that has all of them, and
/// otherwise from the shipped set, drawn in the colours of the palette, so that a window never mixes two
/// styles.
namespace Icons
{
/// An icon by its name in the shared naming of icon themes, such as "document-edit" or "list-add". An
/// unknown name gives an empty icon.
QIcon Of(const QString &name);
/// The icon of a file type by its extension with the dot (".pdf", in any case), or of "folder". Addresses
/// (".URL"), pages (".HTM") and programs (".EXE") have fixed icons; an unknown type gets the icon of
/// `otherwise`, or that of an unknown file.
QIcon OfFileType(const QString &extension, const QString &otherwise = {});
/// The program's own icon.
QIcon Application();
} // namespace Icons
