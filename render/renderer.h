// The base class of the renderers, each of which draws with its own GL program.
#pragma once

class Renderer {
  public:
    Renderer() = default;
    Renderer(const Renderer&) = delete;
    Renderer& operator=(const Renderer&) = delete;
    virtual ~Renderer() = default;
};
