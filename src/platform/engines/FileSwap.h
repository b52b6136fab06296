#pragma once

class QString;

/// A file written beside another and then put in its place, so that a crash leaves one of them whole.
namespace FileSwap
{
/// Makes an empty file that its owner alone may read; one of that name goes first. False if it cannot.
bool Make(const QString &file);
/// Gives `made` the owner and rights of `file`, writes it to the disk, and renames it over `file`. False,
/// with `file` as it was, if that fails.
bool Replace(const QString &made, const QString &file);
/// Whether the file has one name alone, so that nobody reaches it once that is another's.
bool HasOneName(const QString &file);
} // namespace FileSwap
