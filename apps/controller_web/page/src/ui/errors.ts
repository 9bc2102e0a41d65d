import { ApiError } from '../api/client.ts';
import { t } from '../text/text.ts';

/** What has failed and what the user can do. */
export function errorText(error: unknown): string {
  if (!(error instanceof ApiError)) return t('error.unexpected', String(error));
  if (error.status === 0) return t('error.unreachable');
  if (error.status === 401) return t('error.signedOut');
  const refusals = error.refused.map((refusal) => refusal.message).join(' ');
  return refusals ? `${error.message} ${refusals}` : error.message;
}
