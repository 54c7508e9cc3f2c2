// The updater's one screen: guides the operator, drives the update engine frame by frame, and ends
// the program by starting the instrument's main application again.
//
// It keeps no state machine of its own: the state is the engine's, read whenever it is needed.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "platform/gles.h"
#include "render/font_set.h"
#include "render/image_renderer.h"
#include "update/updater.h"

class SimpleUI {
  public:
    SimpleUI() = default;
    SimpleUI(const SimpleUI&) = delete;
    SimpleUI& operator=(const SimpleUI&) = delete;
    virtual ~SimpleUI();

    // Sets the screen up, once, with the GL context current: the GUI data folder, the log, the
    // language with its fonts and texts, and the background. Sizes in pixels.
    void init(uint32_t width, uint32_t height);

    // Draws the whole screen into the cleared buffer.
    void draw();

    // The logic of one frame: looks for the key, advances the update, and starts the main
    // application once the update is complete.
    void tick();

    // A key that went down, by its virtual-key code.
    void onKey(WPARAM virtualKey);

    // Starts the main application and ends this process with code 0. When it cannot be started,
    // comes back and notes that it was tried.
    void launchMainApp();

    // Keeps the two arguments of the command line.
    void setLaunchArguments(const std::string& first, const std::string& second);

    // From now on the update starts by itself as soon as a key is found.
    void setAutoMode();

  private:
    void drawBackground();
    void drawKeyMarkers();
    void drawTexts();
    void drawMessageLines();
    void restart();

  protected:
    FontSet fontSet;
    uint32_t screenWidth = 0;
    uint32_t screenHeight = 0;
    std::unique_ptr<ImageRenderer> imageRenderer;
    uint32_t backgroundTexture = 0;
    Updater updater;
    bool restartAttempted = false;
    std::string launchArgument1 = "NOT SET";
    std::string launchArgument2 = "NOT SET";
    bool autoMode = false;
};
