// SPDX-License-Identifier: MIT
#include "headless/model/node_types.h"
#include "headless/shaders/material_picture.h"
#include "headless/tables/adopt.h"
#include "headless/tables/tables.h"

namespace headless {

namespace {

BaseMaterial* alloc(int32_t type) {
    return toHost(createMaterial(type).release());
}

BaseMaterial* getNext(const BaseMaterial* material) {
    return toHost(fromHost(material)->next);
}

BaseMaterial* getPred(const BaseMaterial* material) {
    return toHost(fromHost(material)->pred);
}

BaseShader* getFirstShader(const BaseMaterial* material) {
    return toHost(fromHost(material)->shaders().first());
}

void insertShader(BaseMaterial* material, BaseShader* shader) {
    if (std::unique_ptr<Shader> adopted = adopt(shader)) {
        fromHost(material)->insertShader(std::move(adopted));
    }
}

BaseShader* allocShader(int32_t type) {
    return toHost(createShader(type).release());
}

BaseShader* getNextShader(const BaseShader* shader) {
    return toHost(fromHost(shader)->next);
}

BaseShader* getDownShader(const BaseShader* shader) {
    return toHost(fromHost(shader)->children().first());
}

void insertShaderUnder(BaseShader* parent, BaseShader* shader) {
    if (shader && parent && !fromHost(parent)->isWithin(*fromHost(shader))) {
        if (std::unique_ptr<Shader> adopted = adopt(shader)) {
            fromHost(parent)->insertChild(std::move(adopted), nullptr);
        }
    }
}

BaseMaterial* getMaterialOfShader(const BaseShader* shader) {
    return toHost(fromHost(shader)->material());
}

bool getChannelState(const BaseMaterial* material, int32_t channel) {
    return channelState(*fromHost(material), channel);
}

bool initGLImage(BaseMaterial* material, BaseDocument* document, BaseThread* thread, BaseBitmap* bitmap) {
    return bitmap && drawMaterial(*fromHost(material), document, thread, bitmap);
}

} // namespace

const MaterialTable* materialTable() {
    static constexpr MaterialTable table = {
        .Alloc = alloc,
        .GetNext = getNext,
        .GetPred = getPred,
        .GetFirstShader = getFirstShader,
        .InsertShader = insertShader,
        .AllocShader = allocShader,
        .GetNextShader = getNextShader,
        .GetDownShader = getDownShader,
        .InsertShaderUnder = insertShaderUnder,
        .GetMaterialOfShader = getMaterialOfShader,
        .GetChannelState = getChannelState,
        .InitGLImage = initGLImage,
    };
    return &table;
}

} // namespace headless
