#pragma once

// Commands that operate the window of a tool as its user does.

#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "remote/instrument.h"
#include "remote/replies.h"
#include "remote/setting_commands.h"
#include "scope/parts.h"

namespace kv408 {

/// The numbers of `values`; 9.91E+37 where there is none.
[[nodiscard]] std::string values_reply(std::span<const ToldValue> values);

/// The reasons for those that are not there, each a text; "" for a number that is.
[[nodiscard]] std::string reasons_reply(std::span<const ToldValue> values);

/// `value` as a person would type it.
[[nodiscard]] std::string typed_number(double value);

/// Makes commands of one tool's window, which has the controls `Controls`.
template <typename Dialog>
class ToolCommands {
public:
    using Controls = std::remove_reference_t<decltype(std::declval<Dialog&>().controls())>;

    /// The window that `find` gives of the tools.
    ToolCommands(Instrument& instrument, Dialog& (Tools::*find)())
        : instrument_(instrument), find_(find) {}

    [[nodiscard]] Dialog& dialog() const { return (instrument_.scope().tools().*find_)(); }

    /// Opens and closes it.
    [[nodiscard]] Command state(std::string header) const {
        return boolean_setting(
            std::move(header),
            [self = *this](const Call& call, bool on) {
                self.act(call, [on](Dialog& dialog) {
                    if (dialog.is_open() != on) {
                        on ? dialog.open() : dialog.close();
                    }
                });
            },
            [self = *this](const Call&) { return self.dialog().is_open(); });
    }

    /// Presses one of its buttons.
    [[nodiscard]] Command press(std::string header, Button Controls::*button) const {
        return {std::move(header), [self = *this, button](const Call& call) {
                    self.act(call,
                             [button](Dialog& dialog) { (dialog.controls().*button).click(); });
                }};
    }

    /// One of its lists, whose entries are called `choices`.
    [[nodiscard]] Command list(std::string header, std::span<const std::string_view> choices,
                               ListBox Controls::*list) const {
        return choice_setting(
            std::move(header), choices,
            [self = *this, list](const Call& call, std::size_t index) {
                self.act(call, [list, index](Dialog& dialog) {
                    (dialog.controls().*list).set_index(static_cast<int>(index));
                });
            },
            [self = *this, list](const Call&) {
                return static_cast<std::size_t>((self.dialog().controls().*list).index());
            });
    }

    /// What a box takes.
    struct Typed {
        NumberRange range;
        TextBox Controls::*box;
        /// What it says, in the base unit; 0 where it is empty and that is not 0.
        std::function<double(const Dialog&)> get;
        bool zero_is_empty = true; ///< 0 empties the box
    };

    /// One of its boxes, for a whole number where that counts something, else a real one.
    [[nodiscard]] Command type(std::string header, const Typed& typed) const {
        return typed.range.quantity == Quantity::number
                   ? whole_setting(std::move(header), typing(typed))
                   : type_real(std::move(header), typed);
    }
    [[nodiscard]] Command type_real(std::string header, const Typed& typed) const {
        return real_setting(std::move(header), typing(typed));
    }

    /// Whether one of its boxes is empty; switching that on empties it, off types 0.
    [[nodiscard]] Command automatic(std::string header, TextBox Controls::*box) const {
        return boolean_setting(
            std::move(header),
            [self = *this, box](const Call& call, bool on) {
                self.act(call, [box, on](Dialog& dialog) {
                    (dialog.controls().*box).set_text(on ? "" : "0");
                });
            },
            [self = *this, box](const Call&) {
                return (self.dialog().controls().*box).text().empty();
            });
    }

    /// Its numbers, and the reasons for those that are not there.
    [[nodiscard]] Command values(std::string header) const {
        return query_command(std::move(header), [self = *this](const Call&) {
            return values_reply(self.dialog().values());
        });
    }
    [[nodiscard]] Command reasons(std::string header) const {
        return query_command(std::move(header), [self = *this](const Call&) {
            return reasons_reply(self.dialog().values());
        });
    }

private:
    [[nodiscard]] NumberSetting typing(const Typed& typed) const {
        NumberSetting setting{typed.range, {}, {}};
        setting.set = [self = *this, typed](const Call& call, double value) {
            self.act(call, [&](Dialog& dialog) {
                (dialog.controls().*typed.box)
                    .set_text(value == 0.0 && typed.zero_is_empty ? "" : typed_number(value));
            });
        };
        setting.get = [self = *this, typed](const Call&) { return typed.get(self.dialog()); };
        return setting;
    }

    template <typename Action>
    void act(const Call& call, const Action& action) const {
        instrument_.act(call.client,
                        [this, &action](Scope& scope) { action((scope.tools().*find_)()); });
    }

    Instrument& instrument_;
    Dialog& (Tools::*find_)();
};

} // namespace kv408
