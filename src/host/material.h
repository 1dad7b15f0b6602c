// SPDX-License-Identifier: MIT
#pragma once

#include "host/baselist.h"
#include "host/shading.h"

class BaseBitmap;
class BaseMaterial;
class BaseThread;

class BaseShader : public BaseList2D {
public:
    static BaseShader* Alloc(int32_t type);
    static void Free(BaseShader*& shader);

    BaseShader* GetNext() const;
    /// First of the shaders below this one.
    BaseShader* GetDown() const;
    /// The host takes over `shader`: below this one, in front.
    void InsertUnder(BaseShader* shader);
    /// The material in whose tree of shaders this one is; null outside.
    BaseMaterial* GetMaterial() const;

    /// Before Sample, once, from one thread. An InitRenderResult.
    int32_t InitRender(const InitRenderStruct& init);
    void FreeRender();
    /// Any thread, between InitRender and FreeRender. Components may lie outside 0 to 1.
    Vector Sample(const ChannelData& channel);
};

class BaseMaterial : public BaseList2D {
public:
    /// The caller owns the material until it's inserted. Null for an unknown type.
    static BaseMaterial* Alloc(int32_t type);
    static void Free(BaseMaterial*& material);

    BaseMaterial* GetNext() const;
    BaseMaterial* GetPred() const;
    BaseShader* GetFirstShader() const;
    void InsertShader(BaseShader* shader);

    /// True when a channel of a standard material is switched on; false for other materials.
    bool GetChannelState(int32_t channel) const;
    /// Fills `bitmap` with what the viewport shows of the material.
    bool InitGLImage(BaseDocument* document, BaseThread* thread, BaseBitmap* bitmap);
};

/// Channels of the host's standard material.
enum MaterialChannelId : int32_t {
    CHANNEL_COLOR = 0,
    CHANNEL_LUMINANCE = 1,
    CHANNEL_TRANSPARENCY = 2,
    /// Mirror reflection.
    CHANNEL_REFLECTION = 3,
    CHANNEL_ENVIRONMENT = 4,
    CHANNEL_FOG = 5,
    CHANNEL_BUMP = 6,
    CHANNEL_ALPHA = 7,
    CHANNEL_SPECULAR = 8,
    CHANNEL_SPECULARCOLOR = 9,
    CHANNEL_GLOW = 10,
    CHANNEL_DISPLACEMENT = 11,
    CHANNEL_DIFFUSION = 12,
    CHANNEL_NORMAL = 13,
};

/// Passes a message to the shader that `node` links at `id`, if there is one.
void HandleShaderMessage(BaseList2D* node, int32_t id, int32_t type, void* data);
