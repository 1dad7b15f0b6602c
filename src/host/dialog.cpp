// SPDX-License-Identifier: MIT
#include "host/dialog.h"

#include "host/tables.h"

GeDialog::GeDialog() {
    HostTables()->dialog->Attach(this);
}

GeDialog::~GeDialog() {
    HostTables()->dialog->Detach(this);
}

bool GeDialog::OpenModal(int32_t width, int32_t height) {
    return HostTables()->dialog->OpenModal(this, width, height);
}

bool GeDialog::OpenAsync(int32_t pluginId, int32_t width, int32_t height) {
    return HostTables()->dialog->OpenAsync(this, pluginId, width, height);
}

void GeDialog::Close() {
    HostTables()->dialog->Close(this);
}

bool GeDialog::IsOpen() const {
    return HostTables()->dialog->IsOpen(this);
}

void GeDialog::SetTitle(const String& title) {
    HostTables()->dialog->SetTitle(this, title);
}

void GeDialog::SetTimer(int32_t milliseconds) {
    HostTables()->dialog->SetTimer(this, milliseconds);
}

bool GeDialog::AddStaticText(int32_t id, int32_t width, int32_t height, const String& text) {
    return HostTables()->dialog->AddGadget(this, GADGET_STATICTEXT, id, width, height, text);
}

bool GeDialog::AddButton(int32_t id, int32_t width, int32_t height, const String& text) {
    return HostTables()->dialog->AddGadget(this, GADGET_BUTTON, id, width, height, text);
}

bool GeDialog::AddCheckbox(int32_t id, int32_t width, int32_t height, const String& text) {
    return HostTables()->dialog->AddGadget(this, GADGET_CHECKBOX, id, width, height, text);
}

bool GeDialog::AddEditText(int32_t id, int32_t width, int32_t height) {
    return HostTables()->dialog->AddGadget(this, GADGET_EDITTEXT, id, width, height, String());
}

bool GeDialog::AddEditNumber(int32_t id, int32_t width, int32_t height) {
    return HostTables()->dialog->AddGadget(this, GADGET_EDITNUMBER, id, width, height, String());
}

bool GeDialog::AddComboBox(int32_t id, int32_t width, int32_t height) {
    return HostTables()->dialog->AddGadget(this, GADGET_COMBOBOX, id, width, height, String());
}

bool GeDialog::AddChild(int32_t comboId, int32_t value, const String& text) {
    return HostTables()->dialog->AddChild(this, comboId, value, text);
}

bool GeDialog::GroupBegin(int32_t id, const String& title) {
    return HostTables()->dialog->AddGadget(this, GADGET_GROUP_BEGIN, id, 0, 0, title);
}

bool GeDialog::GroupEnd() {
    return HostTables()->dialog->AddGadget(this, GADGET_GROUP_END, 0, 0, 0, String());
}

bool GeDialog::SetValue(int32_t id, const GeData& value) {
    return HostTables()->dialog->SetValue(this, id, value);
}

bool GeDialog::GetValue(int32_t id, GeData& value) const {
    return HostTables()->dialog->GetValue(this, id, value);
}

void GeDialog::Enable(int32_t id, bool enabled) {
    HostTables()->dialog->Enable(this, id, enabled);
}

int32_t GeDialog::Message(const BaseContainer& message, BaseContainer& result) {
    return HostTables()->dialog->HandleMessage(this, message, result);
}

bool GeDialog::RestoreLayout(int32_t pluginId, void* secret) {
    return HostTables()->dialog->RestoreLayout(this, pluginId, secret);
}

bool GeDialog::GroupBegin(int32_t id, int32_t columns, const String& title) {
    return GroupBegin(id, title) && HostTables()->dialog->SetGroupColumns(this, id, columns);
}

bool GeDialog::ScrollGroupBegin(int32_t id) {
    return HostTables()->dialog->AddGadget(this, GADGET_SCROLLGROUP_BEGIN, id, 0, 0, String());
}

bool GeDialog::AddColorField(int32_t id, int32_t width, int32_t height) {
    return HostTables()->dialog->AddGadget(this, GADGET_COLORFIELD, id, width, height, String());
}

bool GeDialog::AddUserArea(int32_t id, int32_t width, int32_t height) {
    return HostTables()->dialog->AddGadget(this, GADGET_USERAREA, id, width, height, String());
}

bool GeDialog::LoadDialogResource(int32_t resourceId) {
    return HostTables()->dialog->LoadDialogResource(this, resourceId);
}

void GeDialog::LayoutFlushGroup(int32_t id) {
    HostTables()->dialog->LayoutFlushGroup(this, id);
}

void GeDialog::LayoutChanged(int32_t id) {
    HostTables()->dialog->LayoutChanged(this, id);
}

bool GeDialog::AttachUserArea(GeUserArea& area, int32_t gadgetId) {
    return HostTables()->dialog->AttachUserArea(this, &area, gadgetId);
}

bool GeDialog::SetReal(int32_t id, float value, float minimum, float maximum, float step) {
    return HostTables()->dialog->SetRange(this, id, minimum, maximum, step) && SetValue(id, GeData(value));
}

bool GeDialog::SetColorField(int32_t id, const Vector& colour, float brightness, float maximumBrightness) {
    return HostTables()->dialog->SetColorField(this, id, colour, brightness, maximumBrightness);
}

bool GeDialog::GetColorField(int32_t id, Vector& colour, float& brightness) const {
    return HostTables()->dialog->GetColorField(this, id, colour, brightness);
}

void MessageDialog(const String& text) {
    HostTables()->dialog->MessageDialog(text);
}

bool QuestionDialog(const String& text) {
    return HostTables()->dialog->QuestionDialog(text);
}
