#pragma once

#include "controls/ListModel.h"

/// The people on file who may be the one that somebody is typing: at most `most` of those of the same surname
/// whose forename begins with the same letter, and as many of those of the same e-mail address, each person
/// once. Key "?" + reference, "surname, forename", and the first address line as the one sub-item. Texts come
/// already safe for SQL; nobody is found by a text that is empty, nor by a forename that begins with no
/// letter. Reads `Contacts` by its indexes. Nobody on an error, which is not reported: a hint is not worth a
/// box to whoever is typing.
std::vector<ListItem> ADO_Contact_FindSimilar(const QString &forename, const QString &surname,
                                              const QString &email, int most);
