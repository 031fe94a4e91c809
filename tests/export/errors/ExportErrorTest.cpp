// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/errors/ExportError.h"

#include "base/language/L10n.h"

#include <gtest/gtest.h>

namespace quelto {
namespace {

struct Row {
    const char* language;
    const char* failed;
    const char* noVideo;
};

class ExportErrorTest : public testing::TestWithParam<Row> {
protected:
    void SetUp() override { L10n::use(QLatin1String(GetParam().language)); }
    void TearDown() override { L10n::use(QStringLiteral("tr")); }
};

TEST_P(ExportErrorTest, MessagesAreInTheLanguageOfTheUser)
{
    EXPECT_EQ(ExportError::failed(QStringLiteral("ENOSPC")).message(), QString::fromUtf8(GetParam().failed));
    EXPECT_EQ(ExportError::noVideo().message(), QString::fromUtf8(GetParam().noVideo));
}

TEST_P(ExportErrorTest, WhatIsTheMessageInUtf8)
{
    EXPECT_STREQ(ExportError::noVideo().what(), GetParam().noVideo);
}

TEST_P(ExportErrorTest, ReasonIsTheMessageWithoutTheExport)
{
    EXPECT_EQ(ExportError::failed(QStringLiteral("ENOSPC")).reason(), QStringLiteral("ENOSPC"));
    EXPECT_EQ(ExportError::noVideo().reason(), ExportError::noVideo().message());
}

TEST_P(ExportErrorTest, ExceptionsOfOtherTypesHaveTheirReason)
{
    try {
        throw std::runtime_error("broken");
    } catch (...) {
        const auto error = ExportError::fromCurrentException();
        EXPECT_EQ(error.reason(), QStringLiteral("broken"));
        EXPECT_EQ(error.message(), ExportError::failed(QStringLiteral("broken")).message());
    }
}

INSTANTIATE_TEST_SUITE_P(All, ExportErrorTest,
                         testing::Values(Row{"tr", "Dışa aktarma başarısız: ENOSPC", "Klipte video bulunamadı."},
                                         Row{"en", "Export failed: ENOSPC", "The clip has no video."},
                                         Row{"de", "Export fehlgeschlagen: ENOSPC", "Der Clip enthält kein Video."},
                                         Row{"es", "Error al exportar: ENOSPC", "El clip no tiene vídeo."},
                                         Row{"fr", "Échec de l’export\u00a0: ENOSPC", "Le clip n’a pas de vidéo."},
                                         Row{"pt", "Erro ao exportar: ENOSPC", "O clipe não tem vídeo."},
                                         Row{"ru", "Экспорт не удался: ENOSPC", "В клипе нет видео."}),
                         [](const auto& row) { return std::string(row.param.language); });

} // namespace
} // namespace quelto
