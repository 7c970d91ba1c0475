#pragma once

class QWidget;

namespace ketrel {

class FrmTroubleCode;
class FrmTerms;

// The window of the code library: the four tabs of section options, the list of numbers, the
// definition with its warning, and the vehicle's current and pending codes. It only draws the
// screen and passes clicks on.
QWidget* MakeTroubleCodeWindow(FrmTroubleCode& s);

// The window of the glossary: the read-only grid of terms in its frame.
QWidget* MakeTermsWindow(FrmTerms& s);

}  // namespace ketrel
