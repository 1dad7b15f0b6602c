// SPDX-License-Identifier: MIT
#pragma once

#include "host/dialog.h"
#include "materials/bake_target.h"
#include "materials/bake_thread.h"

#include <memory>

/// Asks what to bake of a material on an object, and bakes it. Closing it while it bakes ends the bake and
/// leaves the document as it was.
class BakeDialog : public GeDialog {
public:
    /// `tag` carries the material on its object.
    BakeDialog(BaseDocument* document, TextureTag* tag) : document_(document), tag_(tag) {}

    bool CreateLayout() override;
    bool InitValues() override;
    bool Command(int32_t id, const BaseContainer& message) override;
    void Timer(const BaseContainer& message) override;
    bool AskClose() override;

private:
    bool bakeShaders();
    bool chooseFile();
    BaseContainer readSettings() const;
    int32_t readNumber(int32_t id, int32_t least) const;
    void takeResults();

    BaseDocument* document_;
    TextureTag* tag_;
    BakeTarget target_;
    std::unique_ptr<BakeThread> thread_;
};
