#pragma once

#include <QByteArray>

/// The same PDF document in less room: the toolkit writes each link and each page as several objects
/// of plain text, which take more room than the pages themselves. Here they are packed and compressed
/// together. A document that is not built as the toolkit builds it is returned as it is.
QByteArray PackedPdf(const QByteArray &pdf);
