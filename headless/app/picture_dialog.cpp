// SPDX-License-Identifier: MIT
#include "headless/app/picture_dialog.h"

#include "headless/app/closest_names.h"
#include "headless/app/plugin_numbers.h"
#include "host/dialog.h"

#include <algorithm>
#include <cctype>
#include <charconv>

namespace headless {

namespace {

std::string shortText(float number) {
    char text[32];
    const auto [end, error] = std::to_chars(std::begin(text), std::end(text), number);
    return {text, end};
}

bool equalsIgnoringCase(std::string_view a, std::string_view b) {
    return std::ranges::equal(
        a, b, [](unsigned char x, unsigned char y) { return std::tolower(x) == std::tolower(y); });
}

/// A choice is named by its whole text or by what stands before a space in it: "D65 (noon daylight)" is D65.
bool isNamed(const std::string& text, const std::string& name) {
    return equalsIgnoringCase(text, name) ||
           (text.size() > name.size() && text[name.size()] == ' ' &&
            equalsIgnoringCase(std::string_view(text).substr(0, name.size()), name));
}

class TonemappingDialogUser {
public:
    explicit TonemappingDialogUser(Host& host)
        : host_(host), dialog_(host.dialogs().openDialogWith(TONEMAP_METHOD)) {
        if (!dialog_) {
            host.executeCommand(TONEMAPPING_DIALOG);
            dialog_ = host.dialogs().openDialogWith(TONEMAP_METHOD);
        }
        if (!dialog_) {
            throw HostError("The plug-in's tone mapping dialog didn't open");
        }
        // Before it is used, the dialog hears of what has happened since the last message, as it would in a
        // window.
        host.dialogs().coreMessage(EVMSG_CHANGE, BaseContainer(EVMSG_CHANGE));
    }

    void enter(const PictureAction::Number& number) {
        const std::optional<NumberRange>& range = require(number.gadget, number.word).range;
        if (range && (number.value < range->minimum || number.value > range->maximum)) {
            throw HostError(number.word + " can't be " + shortText(number.value) + ": it takes " +
                            shortText(range->minimum) + " to " + shortText(range->maximum));
        }
        set(number.gadget, GeData(number.value), number.word);
    }

    void choose(int32_t gadget, const std::string& name, const std::string& what) {
        std::vector<std::string> known;
        for (const auto& [value, text] : require(gadget, what).choices) {
            if (isNamed(text.GetUtf8(), name)) {
                set(gadget, GeData(value), what);
                return;
            }
            known.push_back(text.GetUtf8());
        }
        throw HostError("There is no " + what + " \"" + name + "\"" + suggestion(name, known));
    }

    void set(int32_t gadget, const GeData& value, const std::string& what) {
        if (!host_.dialogs().enter(dialog_, gadget, value)) {
            throw HostError(what + " can't be changed");
        }
    }

    void changeLayer(const PictureAction& action) {
        const std::string what = "The light layer " + std::to_string(action.layer);
        const Gadget* const field = state().find(LAYER_COLOUR + action.layer);
        if (!field) {
            throw HostError(what + " isn't there");
        }
        const float brightness = action.gain.value_or(field->brightness);
        if (brightness < 0.0f || brightness > field->maximumBrightness) {
            throw HostError("gain can't be " + shortText(brightness) + ": it takes 0 to " +
                            shortText(field->maximumBrightness));
        }
        const Vector colour = action.colour.value_or(field->value.GetVector());
        if ((action.gain || action.colour) &&
            !host_.dialogs().enterColour(dialog_, LAYER_COLOUR + action.layer, colour, brightness)) {
            throw HostError(what + " can't be changed");
        }
        if (action.isOn) {
            set(LAYER_ENABLED + action.layer, GeData(*action.isOn), what);
        }
    }

private:
    const DialogState& state() const { return *host_.dialogs().state(dialog_); }

    const Gadget& require(int32_t gadget, const std::string& what) const {
        const Gadget* const found = state().find(gadget);
        if (!found) {
            throw HostError("The plug-in's tone mapping dialog has no field for " + what);
        }
        return *found;
    }

    Host& host_;
    GeDialog* dialog_;
};

} // namespace

void actInTonemappingDialog(Host& host, const PictureAction& action) {
    TonemappingDialogUser user(host);
    if (action.kind == PictureAction::Kind::layer) {
        user.changeLayer(action);
        return;
    }
    for (const PictureAction::Number& number : action.numbers) {
        user.enter(number);
    }
    if (action.kind == PictureAction::Kind::whitePoint && !action.name.empty()) {
        user.choose(WHITE_POINT, action.name, "white point");
    } else if (!action.name.empty()) {
        user.choose(TONEMAP_RESPONSE, action.name, "response function");
    }
    if (action.kind == PictureAction::Kind::tonemap) {
        // Last, so that no picture is made with the method's old numbers.
        user.set(TONEMAP_METHOD, GeData(action.method), "tonemap");
    }
}

} // namespace headless
