#include "CameraChoice.h"
#include "Command.h"
#include "Commands.h"
#include "PanelRun.h"

#include <cstdint>
#include <memory>

namespace telvo
{

namespace
{

constexpr std::uint32_t kMostPort = 65'535;

} // namespace

void addPanelCommand(const Command& app)
{
    const Command command =
        app.add("panel", "Serve a page in the browser, with which cameras are used");
    const auto options = std::make_shared<PanelOptions>();
    addCamerasOptions(command, options->cameras);
    command.option("--port", options->port, "Port to serve at; 0: any that is free")
        .type("N")
        .within(std::uint32_t{0}, kMostPort)
        .showDefault();
    command
        .option("--listen", options->address,
                "Address to serve at, for other machines too; a page then needs the token that is "
                "printed [this machine alone]")
        .type("ADDRESS");
    command.option("--folder", options->folder, "Folder for downloads [the present one]")
        .type("PATH");
    command.flag("--open", options->open, "Show the page in the browser");
    command.footer("The cameras given are connected at once; the page finds and connects others, "
                   "too. It serves\nuntil Ctrl-C. Closing the page leaves cameras and recordings "
                   "as they are.");
    command.onRun([options] { runPanel(*options); });
}

} // namespace telvo
