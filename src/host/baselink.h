// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <cstdint>

class BaseList2D;
class BaseDocument;

/// What a node and the links to it share. The host creates one for a node when the first link asks, and sets
/// `target` to null when the node dies; the last holder frees it.
struct LinkToken {
    std::atomic<int32_t> references{1};
    std::atomic<BaseList2D*> target{nullptr};
};

/// A link to a node that goes null when the node dies. A value: copies point to the same node.
class BaseLink {
public:
    BaseLink() = default;
    explicit BaseLink(BaseList2D* target) { SetLink(target); }
    BaseLink(const BaseLink& other) : token_(other.token_) { Retain(); }
    BaseLink(BaseLink&& other) noexcept : token_(other.token_) { other.token_ = nullptr; }
    BaseLink& operator=(BaseLink other) noexcept {
        LinkToken* const old = token_;
        token_ = other.token_;
        other.token_ = old;
        return *this;
    }
    ~BaseLink() { Release(); }

    void SetLink(BaseList2D* target);
    /// The node, or null: no link, a dead node, a node of another type (when `type` isn't 0), or one of
    /// another document (when `document` isn't null).
    BaseList2D* GetLink(const BaseDocument* document = nullptr, int32_t type = 0) const;
    /// Two links are equal when they lead to the same node.
    bool operator==(const BaseLink& other) const { return GetTarget() == other.GetTarget(); }

private:
    BaseList2D* GetTarget() const { return token_ ? token_->target.load() : nullptr; }
    void Retain() {
        if (token_) {
            token_->references.fetch_add(1, std::memory_order_relaxed);
        }
    }
    void Release();

    LinkToken* token_ = nullptr;
};
