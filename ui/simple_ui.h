// The updater's one screen. It guides the operator, drives the update engine frame by frame, and
// ends the program by starting the instrument's main application again.
//
// The screen has no state machine of its own: it reads the engine's state whenever it needs it.
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

    // Sets up the GUI data folder, the log, the language with its fonts and texts, and the
    // background. Sizes in pixels. Call once, with the GL context current.
    void init(uint32_t width, uint32_t height);

    // Draws the whole screen into the cleared buffer.
    void draw();

    // Runs the logic of one frame: looks for the update key, advances the update, and starts the
    // main application once the update is complete.
    void tick();

    // Handles a key-down message; `virtualKey` is its virtual-key code.
    void onKey(WPARAM virtualKey);

    // Starts the main application and exits with code 0. Returns only when the application cannot
    // be started, and remembers the attempt.
    void launchMainApp();

    // Stores the two arguments of the command line.
    void setLaunchArguments(const std::string& first, const std::string& second);

    // Makes the update start as soon as an update key is found.
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
