#pragma once

#include "platform/connection/Recordset.h"

#include <QString>

/// The writer of the reports: one output at a time, `temp.htm` in gDocDir, in windows-1252; a character
/// outside it becomes a numeric reference. Texts are written as raw HTML. A report is written to a new file,
/// which replaces the previous one only when it is complete.

/// 1 = cells have a thin border.
extern int HTMLBorder;

/// The full path of the output.
QString HTML_OutputPath();
/// Starts the output with its head, the user's own header file (gHeaderFile, if there is one) and the title.
/// False if no file can be written in the folder: HTML_Finish then says why, and what is written until then
/// is lost.
bool HTML_Start(const QString &title);
/// Why the user's header file is not in the last report started; "" if nothing was left out.
QString HTML_HeaderFault();

/// How the last two tags are spelled: the reports about contacts have always had them in lower case.
enum class HtmlEnd { Capitals, Small };
/// Ends the body and puts the file in its place. False if any of it could not be written: the cause is then
/// noted for HandleError, with the file's name as its source, and returned in `fault`; the previous file is
/// still there.
bool HTML_Finish(HtmlEnd end = HtmlEnd::Capitals, QString *fault = nullptr);
/// Throws away what was written since HTML_Start.
void HTML_Discard();

/// The codes for texts and cells that reports use.
namespace Html
{
constexpr int bare = 0; ///< modes
constexpr int bold = 1;
constexpr int plain = 2;
constexpr int left = 0; ///< alignments
constexpr int centre = 1;
constexpr int right = 2;
constexpr int textSize = 2; ///< sizes
constexpr int headingSize = 4;
constexpr int titleSize = 5;
} // namespace Html

/// Mode 0 writes the bare text, 1 a bold paragraph, any other a plain paragraph. Size is a size code, 1 to 6.
void HTML_Text(int mode, int size, const QString &text);
void HTML_Table();
void HTML_TableEnd();
void HTML_RowStart();
void HTML_RowEnd();
void HTML_Rule();
/// Alignments are codes, 0 to 4. A column span below 2 and a width (in pixels) below 1 are not written.
void HTML_Cell(int colSpan, int mode, int hAlign, int vAlign, int size, int width, const QString &text);
void HTML_LabelRow(const QString &label, const QString &value);
void HTML_BlankRow();
/// The text of a field; fields whose name means an e-mail or web address become links. "" for NULL.
QString HTML_FieldText(const Recordset::Row &row, QStringView fieldName);
/// The link scheme that a field's name implies: "mailto:", "http://", or "" for a plain text.
QString HTML_LinkScheme(QStringView fieldName);
/// A text as a link; unchanged if there is no scheme or no text.
QString HTML_LinkText(const QString &scheme, const QString &value);
