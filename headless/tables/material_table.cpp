// SPDX-License-Identifier: MIT
#include "headless/model/node_types.h"
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
    };
    return &table;
}

} // namespace headless
