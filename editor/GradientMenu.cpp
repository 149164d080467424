#include "GradientMenu.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMenu>
#include <QSettings>

#include "GradientFile.h"
#include "GradientTool.h"
#include "KXMessageBox.h"
#include "NVGradientToolbar.h"

namespace
{

const QLatin1String FolderKey("gradient/folder");
// More would not fit on a screen.
const int MaxErrors = 10;

} // namespace

GradientMenu::GradientMenu(QMenu* menu, GradientTool* tool, QSettings* settings, QWidget* window)
    : QObject(window), m_pTool(tool), m_pSettings(settings), m_pWindow(window)
{
    menu->addAction(tr("&Import Gradients..."), this, &GradientMenu::OnImport);
    menu->addAction(tr("&Export Gradients..."), this, &GradientMenu::OnExport);
}

void GradientMenu::Import(const QStringList& paths)
{
    QVector<NamedGradient> all;
    QStringList errors;
    for (const QString& path : paths)
    {
        QString error;
        all += GradientFile::Read(path, &error);
        if (!error.isEmpty())
            errors += error;
    }
    QString error;
    if (!all.isEmpty() && !m_pTool->AddGradients(all, &error))
        errors += error;
    if (!all.isEmpty())
        Q_EMIT Message(tr("%n gradient(s) were imported.", nullptr, all.size()));
    if (errors.size() > MaxErrors)
    {
        const int more = errors.size() - MaxErrors;
        errors = errors.mid(0, MaxErrors) + QStringList(tr("And %n more.", nullptr, more));
    }
    if (!errors.isEmpty())
        ShowError(errors.join(QStringLiteral("\n\n")));
}

bool GradientMenu::Export(const QString& path)
{
    QVector<NamedGradient> all = m_pTool->GetLibrary().GetGradients();
    const bool isOne = QFileInfo(path).suffix().compare(QLatin1String("ggr"), Qt::CaseInsensitive) == 0;
    if (isOne)
        all = all.mid(m_pTool->GetGradientBar()->GetCurrentGradientIndex(), 1);
    QString error;
    if (!GradientFile::Write(path, all, &error))
    {
        ShowError(error);
        return false;
    }
    Q_EMIT Message(
        tr("%n gradient(s) were written to %1.", nullptr, all.size()).arg(QFileInfo(path).fileName()));
    return true;
}

void GradientMenu::OnImport()
{
    const QStringList paths = QFileDialog::getOpenFileNames(m_pWindow, tr("Import Gradients"), Folder(),
                                                            GradientFile::ReadFilter());
    if (paths.isEmpty())
        return;
    m_pSettings->setValue(FolderKey, QFileInfo(paths.constFirst()).absolutePath());
    Import(paths);
}

void GradientMenu::OnExport()
{
    QFileDialog dialog(m_pWindow, tr("Export Gradients"), Folder());
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    const QStringList filters = GradientFile::WriteFilter().split(QStringLiteral(";;"));
    dialog.setNameFilters(filters);
    dialog.setDefaultSuffix(QStringLiteral("svg"));
    // The name keeps to the kind that is chosen.
    connect(&dialog, &QFileDialog::filterSelected, &dialog,
            [&dialog, filters](const QString& filter)
            {
                const bool isAll = filter == filters.constFirst();
                dialog.setDefaultSuffix(isAll ? QStringLiteral("svg") : QStringLiteral("ggr"));
            });
    dialog.selectFile(tr("gradients") + QStringLiteral(".svg"));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return;
    const QString path = dialog.selectedFiles().constFirst();
    m_pSettings->setValue(FolderKey, QFileInfo(path).absolutePath());
    Export(path);
}

QString GradientMenu::Folder() const
{
    return m_pSettings->value(FolderKey, QDir::homePath()).toString();
}

void GradientMenu::ShowError(const QString& text)
{
    KXMessageBox box(m_pWindow);
    box.setWindowTitle(tr("Gradients"));
    box.SetIcon(KXMessageBox::Error);
    box.SetText(text);
    box.AddButton(KXMessageBox::Ok);
    box.SetDefaultButton(KXMessageBox::Ok);
    box.Exec();
}
