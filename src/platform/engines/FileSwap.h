#pragma once

class QString;

/// A file written beside another and then put in its place, so that a crash leaves one of them whole.
namespace FileSwap
{
/// Makes an empty file that only its owner may read, after deleting any file of that name. False if it
/// cannot.
bool Make(const QString &file);
/// Gives `made` the owner and permissions of `file`, flushes it to the disk, and renames it over `file`.
/// False, with `file` unchanged, if that fails.
bool Replace(const QString &made, const QString &file);
/// Whether the file has only one name, so that nobody can reach it once another file has that name.
bool HasOneName(const QString &file);
} // namespace FileSwap
