// SPDX-License-Identifier: MIT
#include "tools/tool_fixture.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

/// A PNG image of one brown pixel.
const std::string
    WOOD("\x89\x50\x4e\x47\x0d\x0a\x1a\x0a\x00\x00\x00\x0d\x49\x48\x44\x52\x00\x00\x00\x01\x00\x00\x00\x01"
         "\x08\x02\x00\x00\x00\x90\x77\x53\xde\x00\x00\x00\x0c\x49\x44\x41\x54\x78\x9c\x63\x58\x90\xa0\x00"
         "\x00\x02\xc4\x01\x21\x49\x5b\x9e\x1c\x00\x00\x00\x00\x49\x45\x4e\x44\xae\x42\x60\x82",
         69);

constexpr const char* SCENE = R"(<?xml version="1.0" encoding="utf-8"?>
<scene>
	<metadata>
		<uid>1</uid>
		<name></name>
		<exporter>A test</exporter>
		<author></author>
		<description></description>
		<created_date></created_date>
		<platform></platform>
		<exporter_specific></exporter_specific>
	</metadata>

	<renderer_settings>
		<uid>2</uid>
		<name></name>
		<width>320</width>
		<height>240</height>
		<halt_time>10.5</halt_time>
		<gpu>false</gpu>
		<splat_filter>
			<box/>
		</splat_filter>
	</renderer_settings>

	<camera>
		<uid>3</uid>
		<name>Eye</name>
		<aperture_radius>0.002</aperture_radius>
		<focus_distance>20</focus_distance>
		<sensor_width>0.036</sensor_width>
		<lens_sensor_dist>0.036</lens_sensor_dist>
		<aperture_shape>
			<generated>
				<num_blades>8</num_blades>
				<blade_offset>0.5</blade_offset>
				<blade_curvature_radius>2.5</blade_curvature_radius>
				<start_angle>0.75</start_angle>
			</generated>
		</aperture_shape>
		<keyframe>
			<time>0</time>
			<pos>0 -10 1.5</pos>
			<rotation_quaternion>
				<axis>0 0 1</axis>
				<angle>0</angle>
			</rotation_quaternion>
		</keyframe>
		<up>0 0 1</up>
		<forwards>0 1 0</forwards>
		<camera_type>thin-lens-perspective</camera_type>
	</camera>

	<tonemapping>
		<uid>4</uid>
		<name></name>
		<reinhard>
			<pre_scale>3</pre_scale>
			<post_scale>1</post_scale>
			<burn>10</burn>
		</reinhard>
	</tonemapping>

	<background_settings>
		<uid>5</uid>
		<name></name>
	</background_settings>

	<material>
		<uid>6</uid>
		<name>Red</name>
		<diffuse>
			<albedo>
				<constant>
					<uniform>
						<value>0.5</value>
					</uniform>
				</constant>
			</albedo>
			<random_triangle_colours>false</random_triangle_colours>
			<layer>0</layer>
		</diffuse>
	</material>

	<material>
		<uid>7</uid>
		<name>Wood</name>
		<diffuse>
			<texture>
				<path>images/wood.png</path>
				<a>0</a>
				<b>1</b>
				<c>0</c>
				<uv_set_index>0</uv_set_index>
				<exponent>2.2</exponent>
				<smooth>false</smooth>
			</texture>
			<albedo>
				<texture>
					<texture_index>0</texture_index>
				</texture>
			</albedo>
			<random_triangle_colours>false</random_triangle_colours>
			<layer>0</layer>
		</diffuse>
	</material>

	<mesh>
		<uid>8</uid>
		<name>Square</name>
		<normal_smoothing>false</normal_smoothing>
		<scale>1</scale>
		<external>
			<path>scene_meshes/square.qzmesh</path>
		</external>
	</mesh>

	<model2>
		<uid>9</uid>
		<name>Floor</name>
		<geometry_uid>8</geometry_uid>
		<scale>1</scale>
		<rotation>
			<matrix>
				1 0 0 0 1 0 0 0 1
			</matrix>
		</rotation>
		<keyframe>
			<time>0</time>
			<pos>0 0 0</pos>
			<rotation_quaternion>
				<axis>0 0 1</axis>
				<angle>0</angle>
			</rotation_quaternion>
		</keyframe>
		<materials>
			<material_uid>6</material_uid>
			<material_uid>7</material_uid>
		</materials>
		<emission_scale>
			<material_uid>6</material_uid>
			<measure>luminous_flux</measure>
			<value>100</value>
		</emission_scale>
	</model2>

	<sphere>
		<uid>10</uid>
		<name>Ball</name>
		<keyframe>
			<time>0</time>
			<pos>0 0 1</pos>
			<rotation_quaternion>
				<axis>0 0 1</axis>
				<angle>0</angle>
			</rotation_quaternion>
		</keyframe>
		<radius>0.5</radius>
		<material_uid>6</material_uid>
	</sphere>

	<section_plane>
		<uid>11</uid>
		<name></name>
		<point>0 0 0</point>
		<normal>0 0 1</normal>
		<enabled>true</enabled>
		<cull_geometry>true</cull_geometry>
		<object_list>
			<uid>9</uid>
		</object_list>
	</section_plane>
</scene>
)";

} // namespace

Tool::Tool() {
    write("scene.qzs", SCENE);
    write("images/wood.png", WOOD);
    std::filesystem::create_directory(path("scene_meshes"));
    Quenza::Mesh::writeToFile(path("scene_meshes/square.qzmesh"), square());
}

void Tool::write(const std::string& name, const std::string& bytes) const {
    std::filesystem::create_directories(std::filesystem::path(path(name)).parent_path());
    Quenza::writeBytes(path(name), bytes);
}

Outcome Tool::run(const std::vector<std::string>& words) const {
    std::vector<std::string> all = {QUENZA_BIN_DIR "/quenza-scene"};
    all.insert(all.end(), words.begin(), words.end());
    std::vector<char*> arguments;
    for (std::string& word : all)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    const Quenza::TempDir streams;
    const std::string out = (streams / "out").toStdString();
    const std::string errors = (streams / "errors").toStdString();
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, out.c_str(), O_WRONLY | O_CREAT, 0600);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, errors.c_str(), O_WRONLY | O_CREAT, 0600);
    Outcome outcome;
    pid_t child = 0;
    int status = 0;
    if (posix_spawn(&child, arguments[0], &actions, nullptr, arguments.data(), environ) == 0 &&
        waitpid(child, &status, 0) == child && WIFEXITED(status))
        outcome.status = WEXITSTATUS(status);
    posix_spawn_file_actions_destroy(&actions);
    outcome.out = Quenza::fileBytes(out);
    outcome.errors = Quenza::fileBytes(errors);
    return outcome;
}

std::string Tool::soundScene() {
    return SCENE;
}

std::string Tool::edited(const std::string& from, const std::string& to) {
    std::string text = SCENE;
    const size_t at = text.find(from);
    if (at == std::string::npos) {
        ADD_FAILURE() << "the scene has no " << from;
        return text;
    }
    return text.replace(at, from.size(), to);
}

Quenza::Mesh Tool::square() {
    Quenza::Mesh mesh;
    mesh.setMaxNumTexcoordSets(1);
    mesh.addMaterialUsed("first");
    mesh.addMaterialUsed("second one");
    for (const Quenza::Vec3f& p :
         {Quenza::Vec3f{0, 0, 0}, Quenza::Vec3f{2, 0, 0}, Quenza::Vec3f{2, 1, 0}, Quenza::Vec3f{0, 1, 0}}) {
        mesh.addVertex(p, {0, 0, 1});
        Quenza::Vector<Quenza::Vec2f> uv;
        uv.push_back({p.x / 4, p.y});
        mesh.addUVs(uv);
    }
    const Quenza::u32 corners[] = {0, 1, 2, 3};
    mesh.addQuad(corners, corners, 1);
    mesh.addTriangle(corners, corners, 0);
    mesh.endOfModel();
    return mesh;
}
