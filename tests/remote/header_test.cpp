// The headers that clients' programs rely on: none may go, or be written otherwise.

#include <algorithm>
#include <string>

#include <gtest/gtest.h>

#include "remote/remote_program.h"

namespace kv408 {
namespace {

/// True where `table` has `header`, with `?` a query, with `(?)` a command and its query, else a
/// command.
bool has_header(const CommandTable& table, std::string header) {
    const bool both = header.ends_with("(?)");
    const bool query = both || header.ends_with('?');
    header.resize(header.size() - (both ? 3 : query ? 1 : 0));
    return std::any_of(table.commands().begin(), table.commands().end(), [&](const Command& one) {
        return one.header == header && (one.answer != nullptr || !query) &&
               (one.act != nullptr || (query && !both));
    });
}

TEST(Headers, ThatProgramsRelyOnAreThere) {
    const RemoteProgram program;
    for (const char* const header : {
             "*IDN?",
             "*CLS",
             "*ESE(?)",
             "*ESR?",
             "*SRE(?)",
             "*STB?",
             "*OPC(?)",
             "*WAI",
             "*TST?",
             "*RST",
             "*TRG",
             "SYSTem:ERRor[:NEXT]?",
             "SYSTem:ERRor:COUNt?",
             "SYSTem:VERSion?",
             "SYSTem:HELP:HEADers?",
             "SYSTem:SETup(?)",
             "SYSTem:LOCK(?)",
             "STATus:OPERation[:EVENt]?",
             "STATus:OPERation:CONDition?",
             "STATus:OPERation:ENABle(?)",
             "STATus:QUEStionable[:EVENt]?",
             "STATus:QUEStionable:CONDition?",
             "STATus:QUEStionable:ENABle(?)",
             "STATus:PRESet",
             "RUN",
             "STOP",
             "SINGle",
             "DIGitize",
             "ACQuire:TIMeout(?)",
             "ACQuire:STATe?",
             "ACQuire:TYPE(?)",
             "ACQuire:SPEed(?)",
             "ACQuire:COUNt?",
             "TIMebase:SCALe(?)",
             "TIMebase:DELay<n>(?)",
             "TIMebase:DELay<n>:WHEel(?)",
             "TIMebase:DELay:ADDitional(?)",
             "CHANnel<n>:DISPlay(?)",
             "CHANnel<n>:SCALe(?)",
             "CHANnel<n>:POSition(?)",
             "CHANnel<n>:INVert(?)",
             "CHANnel<n>:VTRigger(?)",
             "TRIGger:SOURce(?)",
             "TRIGger:SLOPe(?)",
             "TRIGger:LEVel(?)",
             "TRIGger:ZERO",
             "TRIGger:HYSTeresis(?)",
             "TRIGger:TIMeout(?)",
             "DISPlay:GRID(?)",
             "DISPlay:DOTS(?)",
             "DISPlay:PERSistence(?)",
             "DISPlay:PERSistence:DEPTh(?)",
             "DISPlay:COLor(?)",
             "MEASure:STATe(?)",
             "MEASure:SLOT<1-3>(?)",
             "MEASure:ANNotate(?)",
             "CURSor:MODE(?)",
             "CURSor:SOURce(?)",
             "CURSor:POSition<n>(?)",
             "CURSor:DELTa?",
             "MEASure:VMAX?",
             "MEASure:VMIN?",
             "MEASure:VPP?",
             "MEASure:VTOP?",
             "MEASure:VBASe?",
             "MEASure:VAMPlitude?",
             "MEASure:VRMS?",
             "MEASure:VMEan?",
             "MEASure:FREQuency?",
             "MEASure:PERiod?",
             "MEASure:RISetime?",
             "MEASure:FALLtime?",
             "MEASure:PWIDth?",
             "MEASure:NWIDth?",
             "MEASure:ALL?",
             "WAVeform:SOURce(?)",
             "WAVeform:FORMat(?)",
             "WAVeform:BYTeorder(?)",
             "WAVeform:PREamble?",
             "WAVeform:DATA?",
             "WAVeform:SEQuence?",
             "HCOPy:SDUMp:DATA?",
             "CALibration:RECord?",
         }) {
        EXPECT_TRUE(has_header(program.control.table(), header)) << header;
    }
}

} // namespace
} // namespace kv408
