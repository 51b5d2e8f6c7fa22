# SPDX-FileCopyrightText: 2026 The Trivex developers
# SPDX-License-Identifier: MIT
#
# QCA promises no binary layout to providers, and its stock provider casts our contexts by theirs.
# So each version is tried before it counts as good; another one may work, and is said aloud.
set(TRIVEX_TRIED_QCA 2.3.5)

# trivex_warn_of_untried_qca(<version>)
function(trivex_warn_of_untried_qca version)
    if(NOT version IN_LIST TRIVEX_TRIED_QCA)
        list(JOIN TRIVEX_TRIED_QCA ", " tried)
        message(WARNING "QCA ${version} has not been tried with Trivex (tried: ${tried}). "
            "Run the tests before you rely on it.")
    endif()
endfunction()
