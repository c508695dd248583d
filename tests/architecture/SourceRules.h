// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_SOURCERULES_H
#define CHARTS_TEST_SOURCERULES_H

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>

/*!
    The rules for the source tree that no compiler checks. Each returns what it objects to, one
    entry "path: what" each, sorted by path.
*/
class SourceRules
{
public:
    /*! \a root is the folder that holds src, tests and so on. */
    explicit SourceRules(const QString &root);

    /*! All files that the rules look at, relative to the root. */
    [[nodiscard]] QStringList files() const;
    /*! How many includes lead from one file of src to another. */
    [[nodiscard]] int includeCount() const;

    /*! Includes in src that lead from one folder to another in a direction that is not allowed. */
    [[nodiscard]] QStringList forbiddenArrows() const;
    /*! Files of different folders of src with the same name before the suffix: the generated type
        registration includes headers by it, and all of them are on the path. */
    [[nodiscard]] QStringList repeatedNames() const;
    /*! Headers and build targets of Qt that are not for applications. */
    [[nodiscard]] QStringList privateQt() const;
    /*! Files that do not name their licence in the first three lines. */
    [[nodiscard]] QStringList withoutLicence() const;
    /*! Headers that open a namespace for whoever includes them. */
    [[nodiscard]] QStringList usingNamespace() const;

private:
    struct File
    {
        QString path; // relative to the root
        QString text;
    };
    struct Include
    {
        QString path;
        bool isQuoted;
    };

    [[nodiscard]] static QList<Include> includesOf(const File &file);
    /*! The folder of src that holds the header \a include, or nothing. */
    [[nodiscard]] QString folderOf(const Include &include) const;

    QList<File> m_files;
};

#endif
