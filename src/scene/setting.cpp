// SPDX-License-Identifier: MIT
#include "scene/setting.h"

#include "foundation/string_utils.h"

namespace Quenza {

Ref<BaseSetting> IntSetting::clone() const {
    return new IntSetting(value);
}

String IntSetting::toString() const {
    return Quenza::toString(value);
}

Ref<BaseSetting> BoolSetting::clone() const {
    return new BoolSetting(value);
}

String BoolSetting::toString() const {
    return boolToString(value);
}

Ref<BaseSetting> DoubleSetting::clone() const {
    return new DoubleSetting(value);
}

String DoubleSetting::toString() const {
    return doubleToString(value);
}

} // namespace Quenza
