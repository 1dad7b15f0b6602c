// SPDX-License-Identifier: MIT
#pragma once

#include "scene/mesh.h"
#include "support/run_program.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

using Quenza::Outcome;

/// Runs the program as a child, in a folder of its own. That folder holds a small sound scene,
/// "scene.qzs", with its mesh "scene_meshes/square.qzmesh" and its image "images/wood.png".
class Tool : public ::testing::Test {
protected:
    Tool();

    /// Paths are those of the folder.
    std::string path(const std::string& name) const { return (temp_ / name).toStdString(); }
    void write(const std::string& name, const std::string& bytes) const;
    std::string read(const std::string& name) const { return Quenza::fileBytes(temp_ / name); }
    bool has(const std::string& name) const { return Quenza::exists(temp_ / name); }

    static Outcome run(const std::vector<std::string>& words) {
        return Quenza::runProgram(QUENZA_BIN_DIR "/quenza-scene", words);
    }

    /// The text of "scene.qzs".
    static std::string soundScene();
    /// That text with the first `from` replaced, which must be in it.
    static std::string edited(const std::string& from, const std::string& to);
    /// Four corners in the plane z = 0 with UVs and normals: one quad of material 1, one triangle of material
    /// 0.
    static Quenza::Mesh square();

    const Quenza::TempDir temp_;
};
