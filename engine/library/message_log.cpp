// SPDX-License-Identifier: MIT
#include "engine/library/message_log.h"

#include "engine/library/interface_table.h"
#include "foundation/string.h"

#include <iterator>

namespace engine::library {

namespace {

using Quenza::i32;
using Quenza::String;
using Quenza::SDK::InterfaceBase;
namespace Message = Quenza::SDK::Message;

constexpr i32 TYPE_INFORMATION = 0;
constexpr const char* NAME = "a message";

struct MessageObject : InterfaceBase {
    i32 type = TYPE_INFORMATION;
    String text;
};

i32 getType(InterfaceBase* object) {
    return static_cast<MessageObject*>(object)->type;
}

void getText(InterfaceBase* object, String& text) {
    text = static_cast<MessageObject*>(object)->text;
}

InterfaceBase* makeMessage(i32 type, const std::string& text) {
    static const auto table = InterfaceTable<NAME, Message::TABLE_SIZE>()
                                  .set(Message::getType, &getType)
                                  .set(Message::getText, &getText);
    auto* const message = new MessageObject;
    message->table = table.entries();
    message->destroy = &destroyObject<MessageObject>;
    message->type = type;
    message->text = text;
    return message;
}

} // namespace

void MessageLog::inform(const std::string& text) {
    add(TYPE_INFORMATION, text);
}

void MessageLog::fail(const std::string& text) {
    add(Message::TYPE_ERROR, text);
}

void MessageLog::add(i32 type, const std::string& text) {
    const std::lock_guard lock(mutex_);
    told_.push_back({type, text});
}

void MessageLog::collect() {
    const std::lock_guard lock(mutex_);
    queue_.insert(queue_.end(), std::make_move_iterator(told_.begin()), std::make_move_iterator(told_.end()));
    told_.clear();
}

bool MessageLog::isQueueEmpty() const {
    const std::lock_guard lock(mutex_);
    return queue_.empty();
}

InterfaceBase* MessageLog::next() {
    const std::lock_guard lock(mutex_);
    if (queue_.empty()) {
        return nullptr;
    }
    InterfaceBase* const message = makeMessage(queue_.front().type, queue_.front().text);
    queue_.pop_front();
    return message;
}

} // namespace engine::library
