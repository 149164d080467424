#include "PrinterList.h"

#include <QDeadlineTimer>
#include <QPrinterInfo>

#include <chrono>
#include <future>
#include <thread>

#include "WatchedDevice.h"

namespace
{

// Between two looks at the progress.
const std::chrono::milliseconds Pause(20);

PrinterList AskToolkit()
{
    PrinterList list;
    const QList<QPrinterInfo> printers = QPrinterInfo::availablePrinters();
    for (const QPrinterInfo& printer : printers)
    {
        list.names += printer.printerName();
        if (printer.state() == QPrinter::Error || printer.state() == QPrinter::Aborted)
            list.stopped += printer.printerName();
    }
    return list;
}

} // namespace

bool PrinterList::Find(const FileProgress* progress, int milliseconds)
{
    const QDeadlineTimer deadline(milliseconds);
    std::packaged_task<PrinterList()> task(AskToolkit);
    std::future<PrinterList> list = task.get_future();
    std::thread(std::move(task)).detach();
    while (list.wait_for(Pause) != std::future_status::ready)
    {
        if (progress->cancelled || deadline.hasExpired())
            return false;
    }
    *this = list.get();
    return true;
}
