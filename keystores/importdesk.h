// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "certificates/certificate.h"
#include "keystores/comboboxmodel.h"
#include "qca/adapter/keybundlefile.h"

#include <QtCrypto>

#include <optional>

/// What has been loaded to be imported, and the locations that it can go to. GUI thread only.
class ImportDesk {
public:
    /// The certificate, with its key bundle where one was loaded.
    const Certificate &loaded() const { return m_loaded; }
    /// Loads the PEM certificate of a file. False when there is none, or it is the one loaded
    /// already.
    bool load(const QString &path) { return m_loaded.loadFromFile(path); }
    /// Loads the bundle that was read. False where none was, and `failure()` says why.
    bool load(const std::optional<Trivex::LoadedBundle> &read);
    void reset() { m_loaded.setCertificate(QCA::Certificate()); }
    void resetBundle();
    /// Why the last bundle that could not be loaded could not; nothing where QCA does not say.
    std::optional<QCA::ConvertResult> failure() const { return m_failure; }

    ComboBoxModel *locations() { return &m_locations; }
    /// Adds `keyStore` to the locations, as one of kind `kind` and with the text `name`, where
    /// imports can go there. False where not, and where the locations have it.
    bool addLocation(const QCA::KeyStore &keyStore, int kind, const QString &name);
    void choose(int location) { m_chosen = location; }
    void chooseFirst() { m_chosen = m_locations.firstSortedId(); }
    /// The chosen location; one without texts when none is.
    ComboBoxModel::Row chosen() const { return m_locations.rowAt(m_chosen); }

private:
    Certificate m_loaded;
    std::optional<QCA::ConvertResult> m_failure;
    ComboBoxModel m_locations;
    int m_chosen = -1;
};
