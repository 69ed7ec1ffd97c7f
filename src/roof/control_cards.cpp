// The control cards of a problem: reading, echo, and the rules that each card carries.
#include <algorithm>
#include <array>
#include <span>

#include "model/control.h"
#include "roof/datain.h"
#include "run/layout.h"
#include "run/report_lines.h"
#include "run/stops.h"
#include "run/tapefile.h"
#include "run/units.h"
#include "solve/solver.h"

namespace tidearc {

namespace {

using Code = std::array<char, 4>;
std::string_view text_of(const Code& code) { return {code.data(), code.size()}; }

void blank_line() { put_text(units.NDOUT, "\n"); }
/// An explanation under a control item.
void explain(std::string_view words) { put_text(units.NDOUT, std::string(10, ' ') + std::string(words) + '\n'); }
void write_code(std::string_view words, const Code& code) { write(units.NDOUT, "5X,A50,1X,A4", dotted(words), code); }

/// A list length: -1 for all nodes, else not negative.
int list_length(int length) { return std::max(length, -1); }

[[noreturn]] void stop_unavailable(std::string_view what, Columns where, std::string_view routine) {
  fatal_box(' ' + std::string(what) + " IS NOT AVAILABLE IN THIS VERSION");
  complain(where, std::string(what) + " is not available in this version");
  FATERR(routine);
}

}  // namespace

void read_data_file_card() {
  read(units.NDIN, "1X,A4,2I5,17A4", output.DATF, output.NRSEQ, output.NRPRT, output.IDENT);
  blank_line();
  write_framed(" PROBLEM INITIATION INFORMATION", '*', 31);
  blank_line();
  write_code("DATA FILE CODE (DATF)", output.DATF);
  explain("IF EQ. OLDF, RESTART RESULTS FROM OLD FILE");
  explain("IF EQ. NEWF, RESULTS WRITTEN ON A NEW FILE");
  explain("IF EQ. NOFL, NO FILE USED FOR RESULTS SAVE");
  explain("IF EQ.     , NO FILE USED FOR RESULTS SAVE");
  write_count("RESTART RESULTS SEQUENCE NUMBER", output.NRSEQ);
  write_count("PRINT CODE FOR RESTART RESULTS SEQUENCE", output.NRPRT);
  explain("IF EQ. 0 RESULTS NOT PRINTED");
  explain("IF EQ. 1 PRINT ONLY GEOMETRY DATA");
  explain("IF EQ. 2 PRINT ONLY ELEMENT RESULTS");
  explain("IF EQ. 3 PRINT BOTH GEOM. AND ELEMENT RESULTS");
  write(units.NDOUT, "/,5X,'D A T A  F I L E  I D E N T I F I E R ..........',/,5X,17A4", output.IDENT);
  if (text_of(output.DATF) == "OLDF") stop_unavailable("DATA FILE CODE OLDF", {2, 5}, "RSTRT1");
}

void read_post_processor_card() {
  constexpr int sequence_limit = 100;
  read(units.NDIN, "1X,A4,I5", output.POSTF, output.NPSTYP);
  output.NPSEQ = output.NPSTYP <= 0 ? -1 : sequence_limit;
  blank_line();
  write_code("POST-PROCESSOR FILE CODE", output.POSTF);
  explain("IF EQ. OLDF, POST-PROC RESULTS FROM OLD FILE");
  explain("IF EQ. NEWF, POST-PROC RESULTS ON A NEW FILE");
  explain("IF EQ. NOFL, NO FILE USED FOR POST-PROCESSOR");
  explain("IF EQ.     , NO FILE USED FOR POST-PROCESSOR");
  write_count("POST-PROCESSOR FILE TYPE", output.NPSTYP);
  explain("IF EQ. 0  TAMODEL.PST");
  explain("IF EQ. 1  TAMODEL.p03, ...");
  explain("IF EQ. 2  Both Types");
}

void read_storage_card() {
  Code scheme{};
  Code type{};
  read(units.NDIN, "1X,A4,1X,A4,I10", scheme, type, solver.NWDBLK);
  if (text_of(scheme) == "    ") scheme = {'C', 'O', 'R', 'E'};
  if (text_of(type) == "    ") type = {'S', 'Y', 'M', 'M'};
  const bool disk = text_of(scheme) == "DISK";
  const bool usym = text_of(type) == "USYM";
  solver.KSTOR = (disk ? 2 : 1) * (usym ? -1 : 1);
  solver.NBLOCK = 1;
  write_framed(" STORAGE ALLOCATION INFORMATION", '*', 31, true);
  blank_line();
  write_code("OVERALL STORAGE SCHEME", scheme);
  explain("IF EQ. CORE , ENTIRELY IN CORE");
  explain("IF EQ. DISK , OUT-OF-CORE");
  write_code("STIFFNESS TYPE", type);
  explain("IF EQ. SYMM , SYMMETRIC STIFFNESS MATRIX");
  explain("IF EQ. USYM , UNSYMMETRIC STIFFNESS MATRIX");
  write_count("NUMBER OF WORDS IN ONE BLOCK FOR DISK OPTION", solver.NWDBLK);
  explain("IF EQ. 0 , ALL AVAILABLE");
  keep_scratch_in_memory(!disk);
}

void read_size_card() {
  ControlFields n = read_control_fields();
  for (std::size_t i = 0; i < 10; ++i) n[i] = std::max(n[i], 0);  // counts; the codes behind them keep their sign
  SizeBlock& s = sizes;
  s = {n[0], n[1], n[2], n[3], n[4], n[5], n[6], n[7], n[8], n[9], n[10], n[11], n[12], n[13], n[14], 0};
  blank_line();
  write_framed(" PROBLEM SIZE CONTROL INFORMATION", '*', 33);
  blank_line();
  write_count("TOTAL NUMBER OF NODES", s.NUMNP);
  write_count("NUMBER OF CONTROL NODES", s.NCONT);
  write_count("NUMBER OF NODE COORD. GENERATION COMMANDS", s.NGEN);
  write_count("NUMBER OF CATENARY GENERATION COMMANDS", s.NCATEN);
  write_count("NUMBER OF NODAL LOCAL COORDINATE SYSTEMS", s.NCSYS);
  write_count("NUMBER OF LOCAL COORD. ASSIGNMENT COMMANDS", s.NDSYS);
  write_count("NUMBER OF ZERO DISPLACEMENT COMMANDS", s.NZERO);
  write_count("NUMBER OF EQUAL DISPLACEMENT COMMANDS", s.NEQUAL);
  write_count("NUMBER OF NODAL MASS GENERATION COMMANDS", s.NMASS);
  write_count("NUMBER OF DIFFERENT GROUPS OF ELEMENTS", s.NELGR);
  write_count("GRAVITY AND WATER EFFECT CODE", s.IGRAV);
  write_count("EIGENSOLUTION INPUT CODE", s.IEIGN);
  blank_line();
  write_count("ENERGY CALCULATION CODE", s.IENRGY);
  explain("0:  NO ENERGY CALCULATION");
  explain("1:  DO ENERGY CALCULATION");
  write_count("LBEM GEOMETRIC STIFFNESS CODE", s.ILBEM);
  explain("0:  UPDATE LBEM GEOMETRIC STIFFNESS");
  explain("1:  CONSTANT LBEM GEOMETRIC STIFFNESS");
  write_count("BAND-WIDTH REDUCTION CODE", s.IBANDW);
  explain("0:  NO");
  explain("1:  YES");
  if (s.NUMNP <= MAXNOD) return;
  write(units.NDOUT,
        "/,'ERROR! PRGROM STOPS',/,' DUE TO THE EXCEEDENCE OF THE ALLOWABLE NUMBER OF NODES. ',/,"
        "' INCREASE THE PARAMETER MAXNOD IN FILE MAXDOF.PAR AND',/,' RECOMPLIE TIDEARC.'");
  complain({1, 5}, format("'NUMNP is',I10,', at most',I7,' nodes are possible'", s.NUMNP, MAXNOD));
  CLOSUP();
}

void read_static_load_card() {
  StaticLoadBlock& s = static_loads;
  ControlFields n = read_control_fields();
  for (int& count : n) count = std::max(count, 0);
  s = {n[0], n[1], n[2], n[3], n[4], n[5], n[6], n[7], 0, 0};
  s.NPAT = s.NFPAT + s.NFOLL + s.NTPAT + s.NPPAT + s.ISELFW + s.IBUOY + s.ICURR;
  write_framed(" STATIC LOAD SPECIFICATION CONTROL INFORMATION", '*', 46, true);
  blank_line();
  write_count("NUMBER OF NODAL FORCE PATTERNS", s.NFPAT);
  write_count("NUMBER OF FOLLOWER FORCE PATTERNS", s.NFOLL);
  write_count("NUMBER OF NODAL TEMPERATURE PATTERNS", s.NTPAT);
  write_count("NUMBER OF 4-NODE SURFACE PRESSURE PATTERNS", s.NPPAT);
  write_count("SELF WEIGHT PATTERN GENERATION CODE", s.ISELFW);
  write_count("BUOYANCY PATTERN GENERATION CODE", s.IBUOY);
  write_count("STATIC CURRENT PATTERN GENERATION CODE", s.ICURR);
  write_count("NUMBER OF STATIC PRESCRIBED DISP. PATTERNS", s.NZDISP);
}

void read_response_card() {
  std::array<int, 4> n{};
  read(units.NDIN, "4I5", n);
  output.NPR = {list_length(n[0]), list_length(n[1]), list_length(n[2])};
  output.IRIGID = n[3];
  write_framed(" RESPONSE OUTPUT CONTROL INFORMATION", '*', 36, true);
  blank_line();
  write_count("NUMBER OF NODES FOR X-DISPLACEMENT RESPONSE", output.NPR[0]);
  write_count("NUMBER OF NODES FOR Y-DISPLACEMENT RESPONSE", output.NPR[1]);
  write_count("NUMBER OF NODES FOR Z-DISPLACEMENT RESPONSE", output.NPR[2]);
  explain("IF EQ. -1, ALL NODES");
  write_count("RIGID BODY OUTPUT CODE", output.IRIGID);
  explain("0=NO,  1=YES");
  if (output.IRIGID == 1) stop_unavailable("RIGID BODY OUTPUT", {16, 20}, "RIGID");
}

void read_post_output_card() {
  OutputBlock& o = output;
  std::array<int, 3> lengths{};
  read(units.NDIN, "4I5,2F10.0,I5", lengths, o.ISPFRC, o.TSPFR1, o.TSPFR2, o.IBCFRC);
  o.NPS = {list_length(lengths[0]), list_length(lengths[1]), list_length(lengths[2])};
  blank_line();
  write_framed(" POST-PROC NODAL OUTPUT CONTROL INFO", '*', 36);
  blank_line();
  write_count("NUMBER OF NODES FOR X-DISPLACEMENT", o.NPS[0]);
  write_count("NUMBER OF NODES FOR Y-DISPLACEMENT", o.NPS[1]);
  write_count("NUMBER OF NODES FOR Z-DISPLACEMENT", o.NPS[2]);
  explain("IF EQ. -1, ALL NODES");
  write_count("SAVE SPECIAL MEMBER FORCES", o.ISPFRC);
  explain("0=NO, 1=YES");
  write(units.NDOUT, "5X,A50,F10.3", dotted("TIME AT WHICH SAVING BEGINS"), o.TSPFR1);
  write(units.NDOUT, "5X,A50,F10.3", dotted("TIME AT WHICH SAVING ENDS"), o.TSPFR2);
  write_count("SAVE BEAM COLUMN COMPONENT FORCES", o.IBCFRC);
  explain("0=NO, 1=YES");
}

}  // namespace tidearc
