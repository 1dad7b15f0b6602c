// SPDX-License-Identifier: MIT
// A plug-in with a video post that tells on the console in which phases it was called, and fails when its
// parameters say so.
#include "host/tables.h"

#include "headless_plugin/numbers.h"

#include <algorithm>
#include <stdexcept>
#include <vector>

#ifdef _WIN32
#define EXPORTED extern "C" __declspec(dllexport)
#else
#define EXPORTED extern "C" __attribute__((visibility("default")))
#endif

namespace {

class TestRender : public VideoPostData {
public:
    bool Message(BaseList2D* node, int32_t type, void* data) override {
        if (type == MSG_RENDER_PREPARE) {
            GePrint("prepare");
        }
        return VideoPostData::Message(node, type, data);
    }

    int32_t Execute(BaseVideoPost* /*videoPost*/, BaseContainer* container, VideoPostStruct* vps) override {
        GePrint(LongToString(vps->vp) + (vps->open ? " opens, flags " : " closes, flags ") +
                LongToString(vps->renderflags));
        if (vps->vp == VIDEOPOSTCALL_INNER && !vps->open) {
            render(*container, *vps);
        }
        const bool fails = container->GetLong(RENDER_FAILING_PHASE) == vps->vp &&
                           container->GetBool(RENDER_FAILS_OPENING) == vps->open;
        if (fails && container->GetBool(RENDER_THROWS)) {
            throw std::runtime_error("out of paint");
        }
        return fails ? container->GetLong(RENDER_FAILURE) : RENDERRESULT_OK;
    }

private:
    /// Paints the region, or all, once a round.
    static void render(const BaseContainer& container, const VideoPostStruct& vps) {
        VPBuffer& buffer = *vps.render->GetBuffer();
        int32_t kind = RENDERREGION_NONE;
        int32_t from = 0;
        int32_t to = 0;
        if (vps.crop && vps.render->GetRegion(kind, from, to)) {
            GePrint(String("region ") + LongToString(kind) + ": " + LongToString(from) + " to " +
                    LongToString(to));
        }
        const bool isColumns = kind == RENDERREGION_COLUMNS;
        const int32_t left = isColumns ? from : 0;
        const int32_t right = isColumns ? to : buffer.GetBw();
        const int32_t top = kind == RENDERREGION_ROWS ? from : 0;
        const int32_t bottom = kind == RENDERREGION_ROWS ? to : buffer.GetBh();
        const int32_t rounds = container.GetLong(RENDER_ROUNDS);
        for (int32_t round = 0; round < rounds && !vps.thread->TestBreak(); ++round) {
            const std::vector<uint8_t> row(static_cast<size_t>(buffer.GetBytesPerPixel() * (right - left)),
                                           static_cast<uint8_t>(std::min(100 + round, 255)));
            for (int32_t y = top; y < bottom; ++y) {
                buffer.SetLine(left, y, right - left, row.data());
            }
            buffer.SetChanged();
            if (rounds > 1) {
                GeSleep(50);
            }
        }
    }
};

NodeData* makeRender() {
    return new TestRender;
}

bool start() {
    PluginInfo info;
    info.id = TEST_RENDER;
    info.name = "Test Render";
    return RegisterVideoPostPlugin(info, makeRender);
}

} // namespace

EXPORTED int32_t c4d_main(int32_t action, void* p1, void* /*p2*/, void* /*p3*/) {
    switch (action) {
    case C4DPL_INIT:
        SetHostTables(static_cast<const HostTable*>(p1));
        return 1;
    case C4DPL_START:
        return start();
    default:
        return 1;
    }
}
