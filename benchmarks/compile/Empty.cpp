void tenLines();

void tenLines() {}
