#pragma once
#include <string>

#include "state/mode6_vars.h"
#include "sweeps/mode6_reply.h"

namespace ketrel {

class App;
class FrmMode6;

// Writes a status panel of frmMode6; the panels show every text in upper case.
void Mode6Status(FrmMode6& f, int panel, const std::string& text);

// Sets the grid's nine columns: headers and widths.
void Mode6GridHeaders(FrmMode6& f);

// Takes the four bytes of one support reply: each of the 32 bits decides the support of the
// next test id from Mode6PIDIndex on, counts it and lists it in List1.
void Mode6NoteSupport(App& app, FrmMode6& f, Mode6Vars& vars, const Mode6SupportBytes& bytes);

// Takes one parsed test frame into the module's variables: control byte, component, result, and
// the limit where the frame holds one (a frame without one leaves the last limit standing).
void Mode6TakeFrame(Mode6Vars& vars, const Mode6Frame& frame);

// Mode6AddResultRow: applies the limit rule and, while the test id at hand is supported,
// writes the next grid row; a row past the grid's end is passed over.
void Mode6AddResultRow(FrmMode6& f, Mode6Vars& vars);

}  // namespace ketrel
