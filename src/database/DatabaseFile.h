#pragma once

class QLineEdit;

/// Lets the user look for an existing database file and puts its path into `field`; a cancelled chooser
/// changes nothing.
void ChooseDatabaseFile(QLineEdit *field);
