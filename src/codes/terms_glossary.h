#pragma once

namespace ketrel {

class App;
class FrmTerms;

// The glossary screen of the application, or nullptr when the program has none.
FrmTerms* TermsScreen(App& app);

// Fills the glossary grid from the table Terms of System/Terms.db, below the header row, and
// sets its headers, widths and alignment. A missing or unreadable file leaves the grid empty
// and shows the error box. Returns the number of rows read.
int LoadTerms(App& app);

// Makes frmTerms when the program has none yet and installs its handlers: opening (the large
// display closed, the main screen held off, LoadTerms) and Exit.
void InstallTermsGlossary(App& app);

}  // namespace ketrel
