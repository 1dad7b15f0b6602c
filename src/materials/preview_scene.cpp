// SPDX-License-Identifier: MIT
#include "materials/preview_scene.h"

#include "host/basedraw.h"
#include "host/document.h"
#include "host/ids.h"
#include "host/material.h"
#include "host/object.h"
#include "host/tag.h"
#include "shared/parameter_ids.h"
#include "shared/plugin_ids.h"
#include "shared/plugin_state.h"

namespace {

/// Document units: an edge of the lamps.
constexpr float LAMP_SIZE = 400.0f;
/// Of the lamps that only brighten the key light's shadows.
constexpr float FILL_GAIN = 0.4f;
/// Document units by which the backdrop goes away from the camera.
constexpr float BACKDROP_SHIFT = 1100.0f;
/// Seconds between two images on disk: never, for what is rendered in seconds.
constexpr float NO_IMAGE_SAVES = 1000000.0f;

/// As the tree is read: an object stands before its children.
BaseObject* nextInTree(const BaseObject* object) {
    if (BaseObject* const child = object->GetDown()) {
        return child;
    }
    while (object && !object->GetNext()) {
        object = object->GetUp();
    }
    return object ? object->GetNext() : nullptr;
}

BaseMaterial* findMaterial(const BaseDocument& stage, const String& name) {
    BaseMaterial* material = stage.GetFirstMaterial();
    while (material && !(material->GetName() == name)) {
        material = material->GetNext();
    }
    return material;
}

BaseContainer* ownTag(BaseObject& object, int32_t type) {
    BaseTag* const found = object.GetTag(type);
    BaseTag* const tag = found ? found : object.MakeTag(type);
    return tag ? tag->GetDataInstance() : nullptr;
}

void addRenderSettings(RenderData& setup) {
    BaseVideoPost* const videoPost = BaseVideoPost::Alloc(PLUGINID_RENDER_SETTINGS);
    if (!videoPost) {
        return;
    }
    setup.InsertVideoPost(videoPost);
    videoPost->DelBit(BIT_VPDISABLED);
    BaseContainer& settings = *videoPost->GetDataInstance();
    settings.SetBool(RS_AUTO_THREADS, true);
    settings.SetLong(RS_MAX_DEPTH, 100);
    settings.SetLong(RS_MODE, RS_MODE_BIDIRECTIONAL);
    settings.SetBool(RS_RESERVED_1433, true);
    settings.SetBool(RS_SAVE_QZI, false);
    settings.SetReal(RS_IMAGE_SAVE_PERIOD, NO_IMAGE_SAVES);
    settings.SetLong(RS_UNIT, RS_UNIT_CM);
}

/// What stands in for the surroundings in the host's own previews.
void removeSurroundings(const BaseDocument& stage) {
    if (BaseMaterial* environment = findMaterial(stage, "Environment")) {
        environment->Remove();
        BaseMaterial::Free(environment);
    }
    if (BaseObject* sky = findPreviewObject(stage, "Sky")) {
        sky->Remove();
        BaseObject::Free(sky);
    }
}

void setUpLamp(BaseObject& light, bool isFill) {
    if (BaseContainer* const tag = ownTag(light, PLUGINID_LIGHT_TAG)) {
        tag->SetLong(LIGHT_SPECTRUM, LIGHT_SPECTRUM_BLACKBODY);
        if (isFill) {
            tag->SetReal(LIGHT_BLACKBODY_GAIN, FILL_GAIN);
        }
    }
    BaseContainer& data = *light.GetDataInstance();
    data.SetLong(LIGHT_TYPE, LIGHT_TYPE_AREA);
    data.SetReal(LIGHT_AREADETAILS_SIZEX, LAMP_SIZE);
    data.SetReal(LIGHT_AREADETAILS_SIZEY, LAMP_SIZE);
}

void setUpLamps(const BaseDocument& stage) {
    bool isBehindKeyLight = false;
    for (BaseObject* object = stage.GetFirstObject(); object; object = nextInTree(object)) {
        if (object->GetType() != Olight) {
            continue;
        }
        setUpLamp(*object, isBehindKeyLight);
        isBehindKeyLight = isBehindKeyLight || object->GetName() == "Light";
    }
}

void moveBackdrop(const BaseDocument& stage) {
    if (BaseObject* const backdrop = findPreviewObject(stage, "Polygon")) {
        Matrix place = backdrop->GetMl();
        place.off.z += BACKDROP_SHIFT;
        backdrop->SetMl(place);
    }
}

/// Settings for lamps as bright as the sun, which black bodies of daylight's colour are.
void setUpCamera(const BaseDocument& stage) {
    const BaseDraw* const view = stage.GetActiveBaseDraw();
    BaseObject* const camera = view ? view->GetSceneCamera(&stage) : nullptr;
    BaseContainer* const tag = camera ? ownTag(*camera, PLUGINID_CAMERA_TAG) : nullptr;
    if (!tag) {
        return;
    }
    tag->SetReal(CAM_F_NUMBER, 64.0f);
    tag->SetReal(CAM_SHUTTER_SPEED, 1000.0f);
    tag->SetLong(CAM_TONEMAP_METHOD, CAM_TONEMAP_CAMERA);
    tag->SetReal(CAM_TONEMAP_FILM_ISO, 200.0f);
    tag->SetReal(CAM_TONEMAP_EV_ADJUST, -6.5f);
    tag->SetLong(CAM_SUPER_SAMPLE_FACTOR, 2);
    tag->SetLong(CAM_TONEMAP_RESPONSE, CAM_RESPONSE_DSC_S315_1);
}

void paintFloor(const BaseDocument& stage) {
    BaseMaterial* const floor = findMaterial(stage, "Floor");
    const Filename* const folder = pluginState().pluginPath.get();
    BaseShader* const picture = floor && folder ? BaseShader::Alloc(Xbitmap) : nullptr;
    if (!picture) {
        return;
    }
    picture->GetDataInstance()->SetFilename(BITMAPSHADER_FILENAME, *folder + "res" + "previewBackground.jpg");
    floor->InsertShader(picture);
    floor->GetDataInstance()->SetLink(MATERIAL_COLOR_SHADER, picture);
}

} // namespace

void setUpPreviewScene(BaseDocument& stage) {
    RenderData* const setup = stage.GetActiveRenderData();
    if (setup && !findPreviewSettings(stage)) {
        addRenderSettings(*setup);
    }
    removeSurroundings(stage);
    setUpLamps(stage);
    moveBackdrop(stage);
    setUpCamera(stage);
    paintFloor(stage);
}

BaseObject* findPreviewObject(const BaseDocument& stage, const String& name) {
    BaseObject* object = stage.GetFirstObject();
    while (object && !(object->GetName() == name)) {
        object = nextInTree(object);
    }
    return object;
}

BaseVideoPost* findPreviewSettings(const BaseDocument& stage) {
    const RenderData* const setup = stage.GetActiveRenderData();
    BaseVideoPost* videoPost = setup ? setup->GetFirstVideoPost() : nullptr;
    while (videoPost && videoPost->GetType() != PLUGINID_RENDER_SETTINGS) {
        videoPost = videoPost->GetNext();
    }
    return videoPost;
}
