// SPDX-License-Identifier: MIT
#pragma once

// The boundary to the host: tables of functions by family, whose root the host hands to c4d_main. The classes
// of this folder wrap them under the host's names; nothing else uses the tables. A host fills every entry.

#include "host/bake.h"
#include "host/basedraw.h"
#include "host/dialog.h"
#include "host/document.h"
#include "host/general.h"
#include "host/layer.h"
#include "host/material.h"
#include "host/menu.h"
#include "host/object.h"
#include "host/registration.h"
#include "host/tag.h"
#include "host/thread.h"
#include "host/userarea.h"
#include "host/videopost.h"

struct GeneralTable {
    void (*Print)(const String& line);
    String (*LoadString)(int32_t id);
    bool (*LoadResource)(const Filename& pluginPath);
    void (*FreeResource)();
    uint32_t (*GetMilliSeconds)();
    void (*Sleep)(uint32_t milliseconds);
    Filename (*GetStartupPath)();
    int32_t (*GetThreadCount)();
    void (*Free)(void* memory);
    void (*GetDateTimeNow)(DateTime& now);
    BaseContainer* (*GetWorldContainer)();
    void (*StatusSetText)(const String& text);
    void (*StatusSetBar)(int32_t percent);
    void (*StatusClear)();
    void (*SpecialEventAdd)(int32_t messageId, uintptr_t parameter1, uintptr_t parameter2);
    void (*EventAdd)();
    bool (*AddUserPreviewScene)(const Filename& scene, int32_t pluginId);
    uint32_t (*CalcCRC32)(const void* data, size_t byteCount, uint32_t seed);
    bool (*FileExists)(const Filename& path, bool isDirectory);
    bool (*CreateDirectory)(const Filename& path);
    bool (*Kill)(const Filename& path, bool recursive);
    bool (*FileSelect)(Filename& path, int32_t mode, const String& title);
    bool (*CopyFile)(const Filename& source, const Filename& target, bool overwrite);
    bool (*ListDirectory)(const Filename& folder, std::vector<Filename>& names);
    bool (*ExtractZip)(const Filename& archive, const Filename& folder);
    bool (*GenerateTexturePath)(const Filename& documentPath, const Filename& name, const Filename& extra,
                                Filename* found);
    BaseContainer* (*GetMenuResource)(const String& name);
    BaseContainer* (*SearchMenuResource)(BaseContainer* menu, const String& entry, int32_t& index);
};

struct ListTable {
    int32_t (*GetType)(const BaseList2D* node);
    bool (*IsInstanceOf)(const BaseList2D* node, int32_t type);
    String (*GetName)(const BaseList2D* node);
    void (*SetName)(BaseList2D* node, const String& name);
    int32_t (*GetInfo)(const BaseList2D* node);
    void (*SetInfo)(BaseList2D* node, int32_t info);
    BaseContainer* (*GetDataInstance)(BaseList2D* node);
    bool (*GetParameter)(const BaseList2D* node, const DescID& id, GeData& data);
    bool (*SetParameter)(BaseList2D* node, const DescID& id, const GeData& data);
    BaseDocument* (*GetDocument)(const BaseList2D* node);
    NodeData* (*GetNodeData)(const BaseList2D* node);
    bool (*Message)(BaseList2D* node, int32_t type, void* data);
    LayerObject* (*GetLayerObject)(const BaseList2D* node);
    void (*SetLayerObject)(BaseList2D* node, LayerObject* layer);
    BaseList2D* (*GetClone)(const BaseList2D* node);
    void (*Remove)(BaseList2D* node);
    /// Frees a node that no document owns; null is ignored.
    void (*Free)(BaseList2D* node);
    /// The node's token with one more reference, which is the caller's.
    LinkToken* (*AcquireLinkToken)(BaseList2D* node);
    uint32_t (*GetDirty)(const BaseList2D* node);
};

struct DocumentTable {
    BaseDocument* (*GetActiveDocument)();
    BaseDocument* (*Alloc)();
    BaseObject* (*GetFirstObject)(const BaseDocument* document);
    BaseMaterial* (*GetFirstMaterial)(const BaseDocument* document);
    RenderData* (*GetActiveRenderData)(const BaseDocument* document);
    BaseDraw* (*GetActiveBaseDraw)(const BaseDocument* document);
    void (*InsertObject)(BaseDocument* document, BaseObject* object, BaseObject* parent, BaseObject* behind);
    void (*InsertMaterial)(BaseDocument* document, BaseMaterial* material, BaseMaterial* behind);
    int32_t (*GetFps)(const BaseDocument* document);
    void (*SetFps)(BaseDocument* document, int32_t fps);
    BaseTime (*GetTime)(const BaseDocument* document);
    void (*SetTime)(BaseDocument* document, const BaseTime& time);
    BaseTime (*GetMinTime)(const BaseDocument* document);
    BaseTime (*GetMaxTime)(const BaseDocument* document);
    void (*AnimateObject)(BaseDocument* document, BaseObject* object, const BaseTime& time, int32_t flags);
    void (*AnimateDocument)(BaseDocument* document, BaseThread* thread, bool expressions);
    Filename (*GetDocumentPath)(const BaseDocument* document);
    Filename (*GetDocumentName)(const BaseDocument* document);
    void (*StartUndo)(BaseDocument* document);
    void (*AddUndo)(BaseDocument* document, int32_t type, BaseList2D* node);
    void (*EndUndo)(BaseDocument* document);
    bool (*DoUndo)(BaseDocument* document);
    BaseVideoPost* (*AllocVideoPost)(int32_t type);
    BaseVideoPost* (*GetFirstVideoPost)(const RenderData* renderData);
    BaseVideoPost* (*GetNextVideoPost)(const BaseVideoPost* videoPost);
    void (*InsertVideoPost)(RenderData* renderData, BaseVideoPost* videoPost, BaseVideoPost* behind);
    RenderData* (*AllocRenderData)();
    void (*InsertRenderData)(BaseDocument* document, RenderData* renderData);
    LayerObject* (*GetLayerObjectRoot)(const BaseDocument* document);
    LayerObject* (*AllocLayer)();
    LayerObject* (*GetDownLayer)(const LayerObject* layer);
    LayerObject* (*GetNextLayer)(const LayerObject* layer);
    void (*InsertLayerUnder)(LayerObject* layer, LayerObject* parent);
    void (*GetActiveMaterials)(const BaseDocument* document, AtomArray& materials);
    void (*GetSelection)(const BaseDocument* document, AtomArray& nodes);
    void (*SetDocumentPath)(BaseDocument* document, const Filename& folder);
    void (*SetDocumentName)(BaseDocument* document, const Filename& name);
    void (*SetChanged)(BaseDocument* document);
};

struct ObjectTable {
    BaseObject* (*Alloc)(int32_t type);
    PolygonObject* (*AllocPolygonObject)(int32_t pointCount, int32_t polygonCount);
    BaseObject* (*GetNext)(const BaseObject* object);
    BaseObject* (*GetPred)(const BaseObject* object);
    BaseObject* (*GetUp)(const BaseObject* object);
    BaseObject* (*GetDown)(const BaseObject* object);
    void (*InsertUnder)(BaseObject* object, BaseObject* parent);
    BaseObject* (*GetCache)(const BaseObject* object, HierarchyHelp* help);
    BaseObject* (*GetDeformCache)(const BaseObject* object);
    BaseObject* (*GetTopOrigin)(const BaseObject* object);
    BaseObject* (*GetCacheParent)(const BaseObject* object);
    Matrix (*GetMg)(const BaseObject* object);
    Matrix (*GetMl)(const BaseObject* object);
    void (*SetMl)(BaseObject* object, const Matrix& matrix);
    void (*SetMg)(BaseObject* object, const Matrix& matrix);
    int32_t (*GetRenderMode)(const BaseObject* object);
    bool (*GetDeformMode)(const BaseObject* object);
    const LayerData* (*GetLayerData)(const BaseObject* object, const BaseDocument* document, bool raw);
    Vector (*GetMp)(const BaseObject* object);
    Vector (*GetRad)(const BaseObject* object);
    BaseTag* (*GetFirstTag)(const BaseObject* object);
    BaseTag* (*GetLastTag)(const BaseObject* object);
    BaseTag* (*GetTag)(const BaseObject* object, int32_t type, int32_t nth);
    void (*InsertTag)(BaseObject* object, BaseTag* tag, BaseTag* behind);
    int32_t (*GetPointCount)(const PolygonObject* object);
    int32_t (*GetPolygonCount)(const PolygonObject* object);
    Vector* (*GetPoints)(PolygonObject* object);
    CPolygon* (*GetPolygons)(PolygonObject* object);
    Vector* (*CreatePhongNormals)(const PolygonObject* object);
    BaseObject* (*SendModelingCommand)(int32_t command, BaseObject* object, BaseDocument* document);
    bool (*RunHierarchy)(Hierarchy* walk, BaseDocument* document, bool splines, float levelOfDetail,
                         int32_t flags, void* startData, BaseThread* thread);
};

struct TagTable {
    BaseTag* (*Alloc)(int32_t type);
    BaseTag* (*GetNext)(const BaseTag* tag);
    BaseTag* (*GetPred)(const BaseTag* tag);
    BaseObject* (*GetObject)(const BaseTag* tag);
    BaseMaterial* (*GetMaterial)(const TextureTag* tag);
    void (*SetMaterial)(TextureTag* tag, BaseMaterial* material);
    Matrix (*GetTextureMatrix)(const TextureTag* tag);
    void (*SetTextureMatrix)(TextureTag* tag, const Matrix& matrix);
    UVWTag* (*AllocUVW)(int32_t count);
    int32_t (*GetUVWCount)(const UVWTag* tag);
    UVWStruct* (*GetUVWData)(UVWTag* tag);
    BaseSelect* (*GetBaseSelect)(const SelectionTag* tag);
    UVWTag* (*GenerateUVW)(BaseObject* object, const Matrix& objectMatrix, TextureTag* tag,
                           const Matrix& ownerMatrix, BaseDraw* view);
};

struct MaterialTable {
    BaseMaterial* (*Alloc)(int32_t type);
    BaseMaterial* (*GetNext)(const BaseMaterial* material);
    BaseMaterial* (*GetPred)(const BaseMaterial* material);
    BaseShader* (*GetFirstShader)(const BaseMaterial* material);
    void (*InsertShader)(BaseMaterial* material, BaseShader* shader);
    BaseShader* (*AllocShader)(int32_t type);
    BaseShader* (*GetNextShader)(const BaseShader* shader);
    BaseShader* (*GetDownShader)(const BaseShader* shader);
    void (*InsertShaderUnder)(BaseShader* parent, BaseShader* shader);
    BaseMaterial* (*GetMaterialOfShader)(const BaseShader* shader);
    bool (*GetChannelState)(const BaseMaterial* material, int32_t channel);
    bool (*InitGLImage)(BaseMaterial* material, BaseDocument* document, BaseThread* thread,
                        BaseBitmap* bitmap);
};

struct ShadingTable {
    int32_t (*InitRender)(BaseShader* shader, const InitRenderStruct& init);
    void (*FreeRender)(BaseShader* shader);
    Vector (*Sample)(BaseShader* shader, const ChannelData& channel);
    Vector (*TraceColor)(VolumeData* volume, const ShadingRay& ray, float maximumDistance);
    void (*IllumSurfacePoint)(VolumeData* volume, Vector* diffuse, Vector* highlights);
    BaseDocument* (*InitBakeTexture)(BaseDocument* document, TextureTag* texture, UVWTag* uvw,
                                     const BaseContainer& settings, int32_t* error, BaseThread* thread);
    int32_t (*BakeTexture)(BaseDocument* bakeDocument, const BaseContainer& settings, BaseBitmap* bitmap,
                           BaseThread* thread);
};

struct BitmapTable {
    BaseBitmap* (*Alloc)();
    MultipassBitmap* (*AllocMultipass)(int32_t width, int32_t height, int32_t colorMode);
    void (*Free)(BaseBitmap* bitmap);
    int32_t (*Init)(BaseBitmap* bitmap, int32_t width, int32_t height, int32_t depth);
    int32_t (*Load)(BaseBitmap* bitmap, const Filename& file);
    int32_t (*Save)(const BaseBitmap* bitmap, const Filename& file, int32_t filter,
                    const BaseContainer* settings, int32_t saveBits);
    int32_t (*GetWidth)(const BaseBitmap* bitmap);
    int32_t (*GetHeight)(const BaseBitmap* bitmap);
    int32_t (*GetDepth)(const BaseBitmap* bitmap);
    void (*GetPixel)(const BaseBitmap* bitmap, int32_t x, int32_t y, uint16_t* r, uint16_t* g, uint16_t* b);
    void (*SetPixel)(BaseBitmap* bitmap, int32_t x, int32_t y, int32_t r, int32_t g, int32_t b);
    uint8_t* (*GetRow)(BaseBitmap* bitmap, int32_t y);
};

struct DrawTable {
    BaseObject* (*GetSceneCamera)(const BaseDraw* view, const BaseDocument* document);
    void (*GetSafeFrame)(const BaseDraw* view, int32_t* left, int32_t* top, int32_t* right, int32_t* bottom);
    void (*SetMatrix)(BaseDraw* view, const Matrix& matrix);
    void (*SetPen)(BaseDraw* view, const Vector& colour);
    void (*SetTransparency)(BaseDraw* view, int32_t transparency);
    void (*DrawPoint)(BaseDraw* view, const Vector& point);
    void (*DrawLine)(BaseDraw* view, const Vector& from, const Vector& to);
    void (*DrawLine2D)(BaseDraw* view, const Vector& from, const Vector& to);
    void (*DrawPolygon)(BaseDraw* view, const Vector* points, const Vector* normals, const Vector* colours,
                        bool quad);
};

struct DescriptionTable {
    bool (*Load)(Description* description, int32_t pluginId);
    BaseContainer* (*GetParameter)(Description* description, const DescID& id);
    bool (*SetParameter)(Description* description, const DescID& id, int32_t dataType,
                         const BaseContainer& properties, const DescID& group);
};

struct ThreadTable {
    BaseThread* (*Alloc)(C4DThread* thread);
    void (*Free)(BaseThread* thread);
    bool (*Start)(BaseThread* thread);
    void (*End)(BaseThread* thread, bool wait);
    bool (*IsRunning)(const BaseThread* thread);
    bool (*TestBreak)(const BaseThread* thread);
};

enum GadgetKind : int32_t {
    GADGET_STATICTEXT,
    GADGET_BUTTON,
    GADGET_CHECKBOX,
    GADGET_EDITTEXT,
    GADGET_EDITNUMBER,
    GADGET_COMBOBOX,
    GADGET_GROUP_BEGIN,
    GADGET_GROUP_END,
    GADGET_RADIOGROUP,
    /// Value and brightness: GetColorField.
    GADGET_COLORFIELD,
    GADGET_SCROLLGROUP_BEGIN,
    GADGET_USERAREA,
    GADGET_SEPARATOR,
};

struct DialogTable {
    void (*Attach)(GeDialog* dialog);
    void (*Detach)(GeDialog* dialog);
    bool (*OpenModal)(GeDialog* dialog, int32_t width, int32_t height);
    bool (*OpenAsync)(GeDialog* dialog, int32_t pluginId, int32_t width, int32_t height);
    void (*Close)(GeDialog* dialog);
    bool (*IsOpen)(const GeDialog* dialog);
    void (*SetTitle)(GeDialog* dialog, const String& title);
    void (*SetTimer)(GeDialog* dialog, int32_t milliseconds);
    bool (*AddGadget)(GeDialog* dialog, int32_t kind, int32_t id, int32_t width, int32_t height,
                      const String& text);
    bool (*AddChild)(GeDialog* dialog, int32_t comboId, int32_t value, const String& text);
    bool (*SetValue)(GeDialog* dialog, int32_t id, const GeData& value);
    bool (*GetValue)(const GeDialog* dialog, int32_t id, GeData& value);
    void (*Enable)(GeDialog* dialog, int32_t id, bool enabled);
    bool (*LoadDialogResource)(GeDialog* dialog, int32_t resourceId);
    /// Of a group that AddGadget has begun.
    bool (*SetGroupColumns)(GeDialog* dialog, int32_t id, int32_t columns);
    bool (*SetRange)(GeDialog* dialog, int32_t id, float minimum, float maximum, float step);
    bool (*SetColorField)(GeDialog* dialog, int32_t id, const Vector& colour, float brightness,
                          float maximumBrightness);
    bool (*GetColorField)(const GeDialog* dialog, int32_t id, Vector& colour, float& brightness);
    void (*LayoutFlushGroup)(GeDialog* dialog, int32_t id);
    void (*LayoutChanged)(GeDialog* dialog, int32_t id);
    /// The host's own handling: calls Command, Timer, CoreMessage and so on.
    int32_t (*HandleMessage)(GeDialog* dialog, const BaseContainer& message, BaseContainer& result);
    bool (*RestoreLayout)(GeDialog* dialog, int32_t pluginId, void* secret);
    bool (*AttachUserArea)(GeDialog* dialog, GeUserArea* area, int32_t gadgetId);
    void (*DetachUserArea)(GeUserArea* area);
    int32_t (*GetAreaWidth)(const GeUserArea* area);
    int32_t (*GetAreaHeight)(const GeUserArea* area);
    void (*SetAreaTimer)(GeUserArea* area, int32_t milliseconds);
    void (*RedrawArea)(GeUserArea* area);
    void (*SetAreaPen)(GeUserArea* area, const Vector& colour);
    void (*DrawAreaRectangle)(GeUserArea* area, int32_t x1, int32_t y1, int32_t x2, int32_t y2);
    void (*DrawAreaBitmap)(GeUserArea* area, BaseBitmap* bitmap, int32_t wx, int32_t wy, int32_t x, int32_t y,
                           int32_t width, int32_t height);
    void (*MessageDialog)(const String& text);
    bool (*QuestionDialog)(const String& text);
};

enum PluginKind : int32_t {
    PLUGINKIND_TAG,
    PLUGINKIND_OBJECT,
    PLUGINKIND_VIDEOPOST,
    PLUGINKIND_MATERIAL,
    PLUGINKIND_SHADER,
    PLUGINKIND_COMMAND,
    PLUGINKIND_MESSAGE,
    PLUGINKIND_CUSTOMGUI,
};

struct RegistrationTable {
    bool (*RegisterNode)(int32_t kind, const PluginInfo& info, NodeDataAllocator allocator);
    bool (*RegisterCommand)(const PluginInfo& info, CommandData* data);
    bool (*RegisterMessage)(const PluginInfo& info, MessageData* data);
    bool (*RegisterCustomGui)(const PluginInfo& info, CustomGuiData* data);
};

struct RenderTable {
    VPBuffer* (*GetBuffer)(const Render* render);
    bool (*GetRegion)(const Render* render, int32_t& kind, int32_t& from, int32_t& to);
    int32_t (*GetWidth)(const VPBuffer* buffer);
    int32_t (*GetHeight)(const VPBuffer* buffer);
    int32_t (*GetBytesPerPixel)(const VPBuffer* buffer);
    bool (*SetLine)(VPBuffer* buffer, int32_t x, int32_t y, int32_t count, const uint8_t* pixels);
    void (*SetChanged)(VPBuffer* buffer);
    int32_t (*RenderDocument)(BaseDocument* document, const BaseContainer& settings, BaseBitmap* bitmap,
                              int32_t flags, BaseThread* thread);
};

/// The root. The version comes first, so that a host of any age can be asked for it.
struct HostTable {
    int32_t apiVersion;
    const GeneralTable* general;
    const ListTable* list;
    const DocumentTable* document;
    const ObjectTable* object;
    const TagTable* tag;
    const MaterialTable* material;
    const ShadingTable* shading;
    const BitmapTable* bitmap;
    const DrawTable* draw;
    const DescriptionTable* description;
    const ThreadTable* thread;
    const DialogTable* dialog;
    const RegistrationTable* registration;
    const RenderTable* render;
};

/// The tables in use. Null until SetHostTables was called.
const HostTable* HostTables();
void SetHostTables(const HostTable* tables);

enum PluginAction : int32_t {
    C4DPL_INIT = 1,
    C4DPL_START = 2,
    C4DPL_END = 3,
    C4DPL_VERSION = 4,
    C4DPL_MESSAGE = 6,
};

enum PluginMessageId : int32_t {
    C4DMSG_NONE = 0,
    C4DMSG_LOAD_RESOURCES = 1,
    C4DMSG_BUILD_MENUS = 1001188,
};

/// The plug-in's one entry: C4DPL_INIT hands over the root table (p1) and the plug-in's folder as a Filename
/// (p3), C4DPL_MESSAGE a message number (p1) and its data (p2).
using PluginEntry = int32_t (*)(int32_t action, void* p1, void* p2, void* p3);
