// Demo books: a small company with worked examples, and large books for measurements.
#pragma once

#include "host/store/books.h"

namespace tolvex::store {

// The demo company: banks, firms, people, rates, and the operations of early 2004: a purchase in
// litas paid in two parts, one in dollars paid at other rates, a sale, its receipt, an advance.
// Operations 1 to 6 are the two purchases with their payments. Everything is saved as a user would
// save it. For books that hold the seed alone.
void fillDemo(Session& session);

// `operations` more operations of three years of trade: invoices with VAT, purchases, receipts and
// payments that cover the oldest documents, some in part, some in currencies; 5000 firms, few of
// them busy. The same books at every call. Writes in large transactions and makes the roll-ups and
// open items at the end: until it returns, or when `progress` stops it (BooksError), they are not
// made. For SQLite or PostgreSQL books that hold the seed.
void generateDemo(Database& db, int operations, const Progress& progress = {});

}  // namespace tolvex::store
