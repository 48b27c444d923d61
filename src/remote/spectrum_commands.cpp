#include <array>
#include <cmath>
#include <string>

#include "remote/choices.h"
#include "remote/tool_commands.h"
#include "remote/tree.h"

namespace kv408 {
namespace {

constexpr std::array<std::string_view, 4> window_choices{"HANN", "FLATtop", "BLACkmanharris",
                                                         "NONE"};
constexpr std::array<std::string_view, 4> source_choices{"CHANnel1", "CHANnel2", "MATH1", "MATH2"};
constexpr std::array<std::string_view, 2> axis_choices{"LINear", "LOGarithmic"};
constexpr std::array<std::string_view, 2> unit_choices{"DBV", "DBM"};
constexpr std::array<std::string_view, 3> hold_choices{"LAST", "MEAN", "PEAK"};

/// The dialog, which has a spectrum; throws `Refused` where it has none.
SpectrumDialog& with_lines(const ToolCommands<SpectrumDialog>& window) {
    SpectrumDialog& dialog = window.dialog();
    if (!dialog.is_open()) {
        throw Refused{ScpiError::settings_conflict, "The spectrum is off"};
    }
    if (!dialog.reason().empty()) {
        throw Refused{ScpiError::data_stale, dialog.reason()};
    }
    return dialog;
}

std::string lines_reply(const SpectrumDialog& dialog) {
    std::string answer;
    for (const double power : dialog.spectrum().power) {
        add_item(answer, real_reply(dialog.level(power)));
    }
    return answer;
}

std::string preamble_reply(const SpectrumDialog& dialog) {
    const Spectrum& spectrum = dialog.spectrum();
    std::string answer = whole_reply(static_cast<int>(spectrum.power.size()));
    add_item(answer, real_reply(spectrum.step));
    add_item(answer, whole_reply(static_cast<int>(dialog.sweeps())));
    return answer;
}

/// Frequency and level of each; 9.91E+37 for both where there is none.
std::string peaks_reply(const SpectrumDialog& dialog) {
    if (dialog.peaks().empty()) {
        const std::string none = real_reply(std::nan(""));
        return none + ',' + none;
    }
    std::string answer;
    for (const SpectralPeak& peak : dialog.peaks()) {
        add_item(answer, real_reply(peak.frequency));
        add_item(answer, real_reply(dialog.level(peak.power)));
    }
    return answer;
}

/// Percent, harmonics up to which, decibels; 9.91E+37 where there is none.
std::string purity_reply(const SpectrumDialog& dialog) {
    const auto& purity = dialog.purity();
    const double none = std::nan("");
    constexpr double percent = 100.0;
    const bool harmonics = purity && purity->harmonics > 1;
    std::string answer = real_reply(harmonics ? purity->distortion * percent : none);
    add_item(answer, whole_reply(purity ? purity->harmonics : 1));
    const bool noise = purity && std::isfinite(purity->signal_to_noise);
    add_item(answer, real_reply(noise ? dbv(purity->signal_to_noise) : none));
    return answer;
}

} // namespace

std::vector<Command> spectrum_commands(Instrument& instrument) {
    using Controls = SpectrumControls;
    const ToolCommands<SpectrumDialog> window(instrument, &Tools::spectrum);
    const auto reply = [window](std::string header, auto answer) {
        return query_command(std::move(header),
                             [window, answer](const Call&) { return answer(with_lines(window)); });
    };
    return {
        boolean_setting(
            "SPECtrum:STATe",
            [&instrument](const Call& call, bool on) {
                instrument.act(call.client, [on](Scope& scope) {
                    SpectrumDialog& dialog = scope.tools().spectrum();
                    if (dialog.is_open() != on) {
                        on ? dialog.controls().mnuspectrum.click() : dialog.close();
                    }
                });
            },
            [window](const Call&) { return window.dialog().is_open(); }),
        window.list("SPECtrum:SOURce", source_choices, &Controls::cmbSpectrumChannel),
        window.list("SPECtrum:WINDow", window_choices, &Controls::cmbSpectrumWindow),
        window.list("SPECtrum:UNIT", unit_choices, &Controls::cmbSpectrumUnit),
        choice_setting(
            "SPECtrum:AXIS", axis_choices,
            [&instrument](const Call& call, std::size_t index) {
                instrument.act(call.client, [index](Scope& scope) {
                    scope.tools().spectrum().controls().chkSpectrumLog.set_checked(index == 1);
                });
            },
            [window](const Call&) -> std::size_t {
                return window.dialog().controls().chkSpectrumLog.checked() ? 1 : 0;
            }),
        window.list("SPECtrum:HOLD", hold_choices, &Controls::cmbSpectrumHold),
        window.type("SPECtrum:COUNt", {{1.0, static_cast<double>(SpectrumHistory::most), 16.0},
                                       &Controls::txtSpectrumCount,
                                       [](const SpectrumDialog& dialog) {
                                           return static_cast<double>(dialog.kept());
                                       }}),
        window.press("SPECtrum:CLEar", &Controls::cmdSpectrumClear),
        reply("SPECtrum:PREamble", preamble_reply),
        reply("SPECtrum:DATA", lines_reply),
        reply("SPECtrum:PEAKs", peaks_reply),
        reply("SPECtrum:PURity", purity_reply),
    };
}

} // namespace kv408
