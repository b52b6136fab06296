#pragma once

class QLineEdit;

/// Lets the user look for an existing database file and puts its path into `field`; a cancelled chooser
/// changes nothing.
void ChooseDatabaseFile(QLineEdit *field);

/// Keeps the whole path as the field's tool tip, since the field may be too short for it.
void ShowWholePath(QLineEdit *field);
