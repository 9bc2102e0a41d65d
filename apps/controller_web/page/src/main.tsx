import { render } from 'preact';
import { App, AppContext } from './app.ts';
import './style/base.css';
import './style/controls.css';
import './style/layout.css';
import './style/table.css';
import './style/job.css';
import './style/forms.css';
import { allowOwnScripts } from './ui/trusted-types.ts';
import { notifyOfEnds } from './ui/notifications.ts';
import { PageView } from './ui/PageView.tsx';
import { keepTheme } from './ui/preferences.ts';

allowOwnScripts();
keepTheme();
const app = new App();
notifyOfEnds(app.store);

const place = document.getElementById('page');
if (!place) throw new Error('index.html has no element "page"');
render(
  <AppContext.Provider value={app}>
    <PageView />
  </AppContext.Provider>,
  place,
);
