// SPDX-License-Identifier: MIT
#pragma once

#include "headless/model/chain.h"
#include "headless/model/node.h"

namespace headless {

class RenderDataNode;

/// An effect of a render setup.
class VideoPost : public Node {
public:
    explicit VideoPost(int32_t type);
    ~VideoPost() override;

    RenderDataNode* renderData() const { return renderData_; }

    VideoPost* next = nullptr;
    VideoPost* pred = nullptr;

    std::unique_ptr<Node> makeEmpty() const override;

private:
    friend class RenderDataNode;
    friend std::unique_ptr<Node> removeNode(Node&);
    RenderDataNode* renderData_ = nullptr;
};

/// A render setup: image size and frame range in its parameters (RenderDataParameter), and video posts.
class RenderDataNode : public Node {
public:
    RenderDataNode();
    ~RenderDataNode() override;

    const Chain<VideoPost>& videoPosts() const { return videoPosts_; }
    VideoPost& insertVideoPost(std::unique_ptr<VideoPost> videoPost, VideoPost* behind);
    VideoPost& appendVideoPost(std::unique_ptr<VideoPost> videoPost) {
        return insertVideoPost(std::move(videoPost), videoPosts_.last());
    }

    RenderDataNode* next = nullptr;
    RenderDataNode* pred = nullptr;

    std::unique_ptr<Node> makeEmpty() const override;
    void visitOwned(Owned which, const std::function<void(Node&)>& visit) const override;
    void appendOwned(std::unique_ptr<Node> node) override;
    void setDocument(Document* document) override;

private:
    friend std::unique_ptr<Node> removeNode(Node&);
    Chain<VideoPost> videoPosts_;
};

} // namespace headless
