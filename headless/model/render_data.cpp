// SPDX-License-Identifier: MIT
#include "headless/model/render_data.h"

#include "headless/model/node_types.h"

namespace headless {

VideoPost::VideoPost(int32_t type) : Node(NodeKind::videoPost, type) {}

VideoPost::~VideoPost() {
    retire();
}

std::unique_ptr<Node> VideoPost::makeEmpty() const {
    auto made = std::make_unique<VideoPost>(type());
    attachPluginData(*made);
    return made;
}

RenderDataNode::RenderDataNode() : Node(NodeKind::renderData, ID_RENDERDATA) {}

RenderDataNode::~RenderDataNode() {
    retire();
}

VideoPost& RenderDataNode::insertVideoPost(std::unique_ptr<VideoPost> videoPost, VideoPost* behind) {
    VideoPost& added = videoPosts_.insert(std::move(videoPost), behind);
    added.renderData_ = this;
    added.setDocument(document());
    return added;
}

std::unique_ptr<Node> RenderDataNode::makeEmpty() const {
    return std::make_unique<RenderDataNode>();
}

void RenderDataNode::visitOwned(Owned, const std::function<void(Node&)>& visit) const {
    for (VideoPost* videoPost = videoPosts_.first(); videoPost; videoPost = videoPost->next) {
        visit(*videoPost);
    }
}

void RenderDataNode::appendOwned(std::unique_ptr<Node> node) {
    appendVideoPost(std::unique_ptr<VideoPost>(static_cast<VideoPost*>(node.release())));
}

void RenderDataNode::setDocument(Document* document) {
    Node::setDocument(document);
    for (VideoPost* videoPost = videoPosts_.first(); videoPost; videoPost = videoPost->next) {
        videoPost->setDocument(document);
    }
}

} // namespace headless
