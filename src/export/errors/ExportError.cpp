// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/errors/ExportError.h"

#include "base/failures/WriteFailure.h"
#include "base/language/T.h"

#include <new>
#include <system_error>

namespace quelto {

ExportError::ExportError(const QString& message, const QString& reason)
    : std::runtime_error(message.toStdString())
    , m_message(message)
    , m_reason(reason)
{
}

ExportError ExportError::failed(const QString& reason)
{
    return {T("Dışa aktarma başarısız: {0}", reason), reason};
}

ExportError ExportError::noVideo()
{
    const auto message = T("Klipte video bulunamadı.");
    return {message, message};
}

ExportError ExportError::fromCurrentException()
{
    try {
        throw;
    } catch (const ExportError& error) {
        return error;
    } catch (const std::system_error& error) {
        return failed(writeFailureText(error.code().value()));
    } catch (const std::bad_alloc&) {
        return failed(T("Bellek yetmedi. Diğer programları kapatıp yeniden deneyin."));
    } catch (const std::exception& error) {
        const auto text = QString::fromLocal8Bit(error.what());
        return failed(text.isEmpty() ? T("bilinmeyen hata") : text);
    } catch (...) {
        return failed(T("bilinmeyen hata"));
    }
}

} // namespace quelto
