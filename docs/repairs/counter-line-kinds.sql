-- Counter lines of cash and bank documents written with the document's own kind in WhatDoc2 are
-- marked as plain account lines ('00'), in the document rows and in both vouchers (the document's
-- and its cancellation). The treasury line (Raj 1) keeps the kind; customer and other counter-party
-- lines are untouched. Running it twice changes nothing the second time.
--   treasury-sql -d <data directory> Corvask_<company>_<year> < docs/repairs/counter-line-kinds.sql
Begin Tran
Update Asnad Set WhatDoc2 = '00'
 Where TypeSys = 'N' And WhatDoc In ('10', '20', '40', '50', '60', '90') And WhatDoc2 = WhatDoc
   And LTrim(Document) In (Select Cast(IDX As Varchar(20)) From N_NaghdTrans
                            Where WhatDoc In ('10', '20', '40', '50', '60', '90') And Raj > 1)
Update N_NaghdTrans Set WhatDoc2 = '00'
 Where WhatDoc In ('10', '20', '40', '50', '60', '90') And Raj > 1 And WhatDoc2 = WhatDoc
Commit Tran
